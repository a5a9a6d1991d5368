#pragma once

#include "diff/comparison.h"

#include <string>
#include <vector>

namespace velum::diff {

/// The values of a property in one line; of a long list the beginning.
std::string valuesText(std::vector<QOB::Object> const& values, model::Addresses& addresses);

/// The class of a part, and the single values that it has; of an object in it the class.
std::string partText(QOB::ClassObject const& part, model::Addresses& addresses);

/// By package, with the summary as its last line.
std::string printText(Comparison const& comparison, Sides const& sides);

/// One line: how many objects are added, removed, renamed, changed and the same.
std::string summaryText(Comparison const& comparison);

/// One JSON object: "added", "removed", "renamed", "changed" and "summary".
std::string printJson(Comparison const& comparison, Sides const& sides);

/// One JSON object with the numbers of the summary.
std::string summaryJson(Comparison const& comparison);

} // namespace velum::diff
