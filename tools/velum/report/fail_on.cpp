#include "report/fail_on.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace velum::report {

namespace {

std::optional<Reason> reasonOf(std::string_view word) {
    for (unsigned number = 0; number < countOfReasons; ++number) {
        if (code(static_cast<Reason>(number)) == word) {
            return static_cast<Reason>(number);
        }
    }
    return std::nullopt;
}

std::string knownReasons() {
    std::string list;
    for (unsigned number = 0; number < countOfReasons; ++number) {
        list += code(static_cast<Reason>(number));
        list += ", ";
    }
    return list + "none";
}

} // namespace

FailOn::FailOn(std::string_view list) : isDefault_(false) {
    while (!list.empty()) {
        const std::string_view word = list.substr(0, list.find(','));
        list.remove_prefix(std::min(word.size() + 1, list.size()));
        if (word == "none") {
            continue;
        }
        const std::optional<Reason> reason = reasonOf(word);
        if (!reason) {
            throw std::invalid_argument("There is no reason (" + std::string(word) +
                                        "); there are: " + knownReasons() + ".");
        }
        isChosen_[static_cast<unsigned>(*reason)] = true;
    }
}

bool FailOn::fails(Report const& report) const {
    return isDefault_ ? report.hasFaults()
                      : std::any_of(report.files.begin(),
                                    report.files.end(),
                                    [this](FileReport const& file) { return fails(file); });
}

bool FailOn::fails(FileReport const& file) const {
    const auto isChosen = [this](Reason reason) {
        return isChosen_[static_cast<unsigned>(reason)];
    };
    for (Finding const& finding : file.findings()) {
        if (isChosen(finding.reason) && (finding.isFault || !isFault(finding.reason))) {
            return true;
        }
    }
    // Faults have findings; of what the model has no place for there may be only a count.
    const auto& skips = file.tally.skips();
    return std::any_of(skips.begin(), skips.end(), [&](auto const& entry) {
        const Reason reason = entry.first.second;
        return !isFault(reason) && isChosen(reason);
    });
}

} // namespace velum::report
