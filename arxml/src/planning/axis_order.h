#pragma once

#include "planning/import_context.h"

#include <vector>

namespace velum::arxml {

/// The axes of that name in `set`, ordered by SW-AXIS-INDEX, which is consumed. Those without a
/// number there come last, as they stand.
std::vector<Element> inAxisOrder(ImportContext const& context, Element set, NameId name);

} // namespace velum::arxml
