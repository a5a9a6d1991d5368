#pragma once

#include "arxml/names.h"
#include "report/tally.h"

#include <string_view>
#include <vector>

namespace velum::report {

/// What a file has and the model does not hold, by element name in alphabetical order.
struct SkipEntry {
    std::string_view element;
    Reason reason;
    const Tally::Skip* skip;
};

std::vector<SkipEntry> skipList(const Tally& tally, const arxml::Names& names);

} // namespace velum::report
