#include "report/skip_list.h"

#include <algorithm>
#include <tuple>

namespace velum::report {

std::vector<SkipEntry> skipList(arxml::Tally const& tally, arxml::Names const& names) {
    std::vector<SkipEntry> list;
    list.reserve(tally.skips().size());
    for (auto const& [key, skip] : tally.skips()) {
        list.push_back({names.text(key.first), key.second, &skip});
    }
    std::sort(list.begin(), list.end(), [](SkipEntry const& a, SkipEntry const& b) {
        return std::tie(a.element, a.reason) < std::tie(b.element, b.reason);
    });
    return list;
}

} // namespace velum::report
