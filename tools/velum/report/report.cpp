#include "report/report.h"

#include <algorithm>

namespace velum::report {

bool Report::hasFaults() const {
    return std::any_of(files.begin(), files.end(), [](const FileReport& file) {
        return std::any_of(file.findings.begin(), file.findings.end(), [](const Finding& finding) {
            return finding.isFault;
        });
    });
}

} // namespace velum::report
