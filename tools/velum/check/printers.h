#pragma once

#include "check/issue.h"

#include <string>
#include <vector>

namespace velum::check {

/// A line for each issue: "FILE:LINE:COLUMN: SEVERITY: RULE: PATH: SENTENCE".
std::string printText(std::vector<Issue> const& issues);

/// The same as JSON.
std::string printJson(std::vector<Issue> const& issues);

/// The same as a log of SARIF 2.1.0, which tools for code review read.
std::string printSarif(std::vector<Issue> const& issues);

} // namespace velum::check
