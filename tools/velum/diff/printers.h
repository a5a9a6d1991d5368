#pragma once

#include "diff/comparison.h"

#include <string>

namespace velum::diff {

/// By package, with the summary as its last line.
std::string printText(Comparison const& comparison, Sides const& sides);

/// One line: how many objects are added, removed, renamed, changed and the same.
std::string summaryText(Comparison const& comparison);

/// One JSON object: "added", "removed", "renamed", "changed" and "summary".
std::string printJson(Comparison const& comparison, Sides const& sides);

/// One JSON object with the numbers of the summary.
std::string summaryJson(Comparison const& comparison);

} // namespace velum::diff
