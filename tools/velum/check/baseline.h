#pragma once

#include "check/issue.h"

#include <map>
#include <string>
#include <vector>

namespace velum::check {

/// Issues that are known and not to be reported again: what an earlier `check --json` printed.
class Baseline {
public:
    /// Raises `arxml::InputError` if the file can't be read or is something else.
    explicit Baseline(std::string const& file);

    /// The issues that are not known. Places don't count, since lines move; of several issues that
    /// say the same, as many are known as the baseline has.
    std::vector<Issue> withoutKnown(std::vector<Issue> issues) const;

private:
    static std::string keyOf(std::string_view rule, std::string_view path, std::string_view text);

    std::map<std::string, int> known_;
};

} // namespace velum::check
