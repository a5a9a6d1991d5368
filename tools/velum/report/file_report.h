#pragma once

#include "report/reason.h"
#include "report/tally.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace velum::report {

/// Something about one element that is worth telling by itself.
struct Finding {
    Place place;
    Reason reason;
    std::string text; ///< A sentence.
    bool isFault;     ///< Whether the input is wrong here; a note otherwise.
};

/// What the import of one file came to.
struct FileReport {
    std::string file;
    Tally tally;
    std::vector<Finding> findings;

    void find(const Place& place, Reason reason, std::string text) {
        findings.push_back({place, reason, std::move(text), isFault(reason)});
    }

    /// Something that is no fault of the input whatever its reason.
    void note(const Place& place, Reason reason, std::string text) {
        findings.push_back({place, reason, std::move(text), false});
    }

    /// Brings the findings into the order of the file.
    void sortFindings() {
        std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
            return a.place.position < b.place.position;
        });
    }
};

} // namespace velum::report
