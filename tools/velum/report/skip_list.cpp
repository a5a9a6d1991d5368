#include "report/skip_list.h"

#include <algorithm>
#include <tuple>

namespace velum::report {

std::vector<SkipEntry> skipList(const arxml::Tally& tally, const arxml::Names& names) {
    std::vector<SkipEntry> list;
    list.reserve(tally.skips().size());
    for (const auto& [key, skip] : tally.skips()) {
        list.push_back({names.text(key.first), key.second, &skip});
    }
    std::sort(list.begin(), list.end(), [](const SkipEntry& a, const SkipEntry& b) {
        return std::tie(a.element, a.reason) < std::tie(b.element, b.reason);
    });
    return list;
}

} // namespace velum::report
