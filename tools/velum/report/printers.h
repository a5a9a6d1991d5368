#pragma once

#include "findings/report.h"
#include "source/names.h"
#include "source/path_tree.h"

#include <string>
#include <string_view>

namespace velum::report {

/// A report with what its ids stand for.
struct PrintJob {
    arxml::Report const& report;
    arxml::Names const& names;
    arxml::PathTree const& paths;
    bool withOmissions = false; ///< List what could be an object and is none; JSON always does.
};

/// As tables for a person.
std::string printText(PrintJob const& job);

/// The same as JSON.
std::string printJson(PrintJob const& job);

/// The text with control characters as \xNN, so that it stays in its line of a terminal.
std::string inOneLine(std::string_view text);

} // namespace velum::report
