#include "merge/conflict.h"

#include <algorithm>
#include <tuple>

namespace velum::merge {

Taken ConflictLog::add(Conflict conflict) {
    auto const found = resolutions_.find(conflict.kind);
    conflict.taken = found != resolutions_.end() ? found->second : Taken::neither;
    conflicts_.push_back(std::move(conflict));
    return conflicts_.back().taken;
}

std::vector<Conflict> ConflictLog::take() {
    std::stable_sort(
        conflicts_.begin(), conflicts_.end(), [](Conflict const& a, Conflict const& b) {
            return std::tie(a.path, a.property) < std::tie(b.path, b.property);
        });
    return std::move(conflicts_);
}

} // namespace velum::merge
