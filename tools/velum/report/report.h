#pragma once

#include "report/file_report.h"

#include <cstdint>
#include <string>
#include <vector>

namespace velum::report {

/// One integer type as the model holds it.
struct IntegerRow {
    std::string name;
    std::int64_t id = 0;
    bool isSigned = false;
    std::string length; ///< such as "32|bit"; empty if the file gives no size
};

/// What an import came to: what the model holds now and what became of the files' elements.
struct Report {
    std::vector<IntegerRow> integers;
    std::vector<FileReport> files;

    /// Whether any file has a fault, as opposed to elements without a place in the model.
    bool hasFaults() const;
};

} // namespace velum::report
