#pragma once

#include "report/input.h"

#include <string>
#include <string_view>

namespace velum::report {

/// As tables for a person. Lists what could be an object and is none if it is to.
std::string printText(Input const& input, bool withOmissions);

/// The same as JSON, which always lists everything.
std::string printJson(Input const& input);

/// The text with control characters as \xNN, so that it stays in its line of a terminal.
std::string inOneLine(std::string_view text);

} // namespace velum::report
