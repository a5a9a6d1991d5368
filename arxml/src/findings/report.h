#pragma once

#include "findings/file_report.h"

#include <cstdint>
#include <string>
#include <vector>

namespace velum::arxml {

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
};

} // namespace velum::arxml
