#pragma once

#include <array>
#include <string>
#include <string_view>
#include <velum_arxml/findings/report.h>

namespace velum::report {

/// Which findings make a run fail.
class FailOn {
public:
    /// Faults: what makes an object wrong or incomplete.
    FailOn() = default;

    /// The reasons of a list, "dangling,symbolic", or "none". Notes don't count, unless they and
    /// skipped elements are all that there is of a reason. Raises `std::invalid_argument` with the
    /// known reasons if one is unknown.
    explicit FailOn(std::string_view list);

    bool fails(arxml::Report const& report) const { return !firstFailure(report).empty(); }

    /// All that a list may name.
    static std::string knownReasons(std::string_view separator);

    /// What makes a run fail, of several the first, as "FILE:LINE:COLUMN: REASON: SENTENCE"; empty
    /// if nothing does.
    std::string firstFailure(arxml::Report const& report) const;

private:
    bool isFailure(arxml::Finding const& finding) const;
    std::string firstFailure(arxml::FileReport const& file) const;

    bool isDefault_ = true;
    std::array<bool, arxml::countOfReasons> isChosen_{};
};

} // namespace velum::report
