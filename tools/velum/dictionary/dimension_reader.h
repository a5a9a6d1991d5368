#pragma once

#include "dictionary/objects.h"

namespace velum::dictionary {

/// Reads the size that an element gives for one dimension and adds it to the matrix: a number, or
/// the name of a system constant or a formula with some, with 0 in the number's place.
void addDimension(const ImportContext& context, const types::Matrix& matrix, arxml::Element size);

} // namespace velum::dictionary
