#pragma once

#include <string>
#include <string_view>
#include <velum_arxml/findings/report.h>

namespace velum::report {

/// As tables for a person. Lists what could be an object and is none if it is to.
std::string printText(arxml::Report const& report, bool withOmissions);

/// The same as JSON, which always lists everything.
std::string printJson(arxml::Report const& report);

/// The text with control characters as \xNN, so that it stays in its line of a terminal.
std::string inOneLine(std::string_view text);

} // namespace velum::report
