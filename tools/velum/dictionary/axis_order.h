#pragma once

#include "dictionary/import_context.h"

#include <vector>

namespace velum::dictionary {

/// The axes of that name in `set`, ordered by SW-AXIS-INDEX, which is consumed. Those without a
/// number there come last, as they stand.
std::vector<arxml::Element>
inAxisOrder(const ImportContext& context, arxml::Element set, arxml::NameId name);

} // namespace velum::dictionary
