#pragma once

#include "writing/outline.h"

#include <vector>

namespace velum::arxml {

/// Reports types and constants that refer to themselves, be it by way of others: a reader can't
/// make objects of them.
void reportCircles(Outline const& outline, std::vector<WriteFinding>& findings);

} // namespace velum::arxml
