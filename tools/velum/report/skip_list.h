#pragma once

#include "findings/tally.h"
#include "source/names.h"

#include <string_view>
#include <vector>

namespace velum::report {

/// What a file has and the model does not hold, by element name in alphabetical order.
struct SkipEntry {
    std::string_view element;
    arxml::Reason reason;
    arxml::Tally::Skip const* skip;
};

std::vector<SkipEntry> skipList(arxml::Tally const& tally, arxml::Names const& names);

} // namespace velum::report
