#pragma once

#include "findings/report.h"
#include "source/names.h"
#include "source/path_tree.h"

#include <string>
#include <string_view>

namespace velum::report {

/// A report with what its ids stand for.
struct PrintJob {
    const arxml::Report& report;
    const arxml::Names& names;
    const arxml::PathTree& paths;
    bool withOmissions = false; ///< List what could be an object and is none; JSON always does.
};

/// As tables for a person.
std::string printText(const PrintJob& job);

/// The same as JSON.
std::string printJson(const PrintJob& job);

/// The text with control characters as \xNN, so that it stays in its line of a terminal.
std::string inOneLine(std::string_view text);

} // namespace velum::report
