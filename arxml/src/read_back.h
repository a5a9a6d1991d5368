#pragma once

#include "writing/outline.h"

#include <functional>
#include <string>
#include <vector>

namespace velum::arxml {

/// Reads the file that was written of a whole model, and reports each difference from the model at
/// the element that it is in. `isWanted` chooses the elements; empty for all.
void reportDifferences(QOB::Model const& model,
                       Outline const& outline,
                       std::string const& file,
                       std::function<bool(Outline::Entry const&)> const& isWanted,
                       std::vector<WriteFinding>& findings);

} // namespace velum::arxml
