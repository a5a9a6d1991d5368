#include "report/fail_on.h"

#include "report/printers.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace velum::report {

namespace {

std::optional<arxml::Reason> reasonOf(std::string_view word) {
    for (unsigned number = 0; number < arxml::countOfReasons; ++number) {
        if (arxml::code(static_cast<arxml::Reason>(number)) == word) {
            return static_cast<arxml::Reason>(number);
        }
    }
    return std::nullopt;
}

std::string failureLine(arxml::FileReport const& file,
                        arxml::Place const& place,
                        arxml::Reason reason,
                        std::string const& sentence) {
    return inOneLine(file.file) + ":" + std::to_string(place.position.line) + ":" +
           std::to_string(place.position.column) + ": " + std::string(code(reason)) + ": " +
           inOneLine(sentence);
}

} // namespace

std::string FailOn::knownReasons(std::string_view separator) {
    std::string list;
    for (unsigned number = 0; number < arxml::countOfReasons; ++number) {
        list += arxml::code(static_cast<arxml::Reason>(number));
        list += separator;
    }
    return list + "none";
}

FailOn::FailOn(std::string_view list) : isDefault_(false) {
    while (!list.empty()) {
        const std::string_view word = list.substr(0, list.find(','));
        list.remove_prefix(std::min(word.size() + 1, list.size()));
        if (word == "none") {
            continue;
        }
        const std::optional<arxml::Reason> reason = reasonOf(word);
        if (!reason) {
            throw std::invalid_argument("There is no reason (" + std::string(word) +
                                        "); there are: " + knownReasons(", ") + ".");
        }
        isChosen_[static_cast<unsigned>(*reason)] = true;
    }
}

bool FailOn::isFailure(arxml::Finding const& finding) const {
    return isDefault_ ? finding.isFault
                      : isChosen_[static_cast<unsigned>(finding.reason)] &&
                            (finding.isFault || !isFault(finding.reason));
}

std::string FailOn::firstFailure(arxml::Report const& report) const {
    for (arxml::FileReport const& file : report.files) {
        if (std::string failure = firstFailure(file); !failure.empty()) {
            return failure;
        }
    }
    return {};
}

std::string FailOn::firstFailure(arxml::FileReport const& file) const {
    for (arxml::Finding const& finding : file.findings) {
        if (isFailure(finding)) {
            return failureLine(file, finding.places.front(), finding.reason, finding.text);
        }
    }
    // Faults have findings; of what the model has no place for there may be only a count.
    arxml::SkippedElements const* first = nullptr;
    for (arxml::SkippedElements const& row : file.skipped) {
        const bool isChosen = !isFault(row.reason) && isChosen_[static_cast<unsigned>(row.reason)];
        if (isChosen && (first == nullptr || row.first.position < first->first.position)) {
            first = &row;
        }
    }
    return first == nullptr
               ? std::string()
               : failureLine(file, first->first, first->reason, "The element is skipped.");
}

} // namespace velum::report
