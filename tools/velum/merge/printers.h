#pragma once

#include "merge/merge.h"

#include <string>

namespace velum::merge {

/// Each conflict with its three values and how it was decided; the numbers in the last line.
std::string printText(Outcome const& outcome);

/// One JSON object: "conflicts", "merged" and "isMerged".
std::string printJson(Outcome const& outcome);

} // namespace velum::merge
