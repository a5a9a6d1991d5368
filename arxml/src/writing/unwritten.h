#pragma once

#include "writing/outline.h"

#include <functional>
#include <vector>

namespace velum::arxml {

/// Reports what the format has no place for in objects of whatever class: comments, visibility,
/// dependencies, stereotypes, notes of other tools. `isWanted` chooses the elements; empty for all.
void reportUnwritten(QOB::Model const& model,
                     Outline const& outline,
                     std::function<bool(Outline::Entry const&)> const& isWanted,
                     std::vector<WriteFinding>& findings);

} // namespace velum::arxml
