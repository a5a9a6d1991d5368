#pragma once

#include "report/file_report.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace velum::report {

/// How many objects of one metaclass the model holds.
struct ClassCount {
    std::string metaclass;
    std::uint64_t count = 0;
};

/// What an import came to: what the model holds now and what became of the files' elements.
struct Report {
    std::vector<ClassCount> classes; ///< By name.
    std::vector<FileReport> files;
    bool isKept = true; ///< False if nothing was kept, since something was wrong.

    /// Whether any object is wrong or incomplete by a fault of the input.
    bool hasFaults() const {
        return std::any_of(files.begin(), files.end(), [](FileReport const& file) {
            return std::any_of(file.findings().begin(), file.findings().end(), [](auto const& one) {
                return one.isFault;
            });
        });
    }
};

} // namespace velum::report
