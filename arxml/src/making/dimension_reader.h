#pragma once

#include "making/made_objects.h"

namespace velum::arxml {

/// Reads the size that an element gives for one dimension and adds it to the matrix: a number, or
/// the name of a system constant or a formula with some, with 0 in the number's place.
void addDimension(ImportContext const& context, types::Matrix const& matrix, Element size);

} // namespace velum::arxml
