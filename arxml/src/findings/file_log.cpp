#include "findings/file_log.h"

#include <algorithm>
#include <utility>
#include <velum_arxml/findings/report.h>

namespace velum::arxml {

void FileLog::add(Spot const& spot,
                  Reason reason,
                  bool isFault,
                  std::string text,
                  std::string_view target) {
    if (!target.empty()) {
        std::string key(target);
        key += '\0';
        key += code(reason);
        key += isFault ? '!' : ' ';
        key += text;
        const auto [entry, isNew] = byTarget_.try_emplace(std::move(key), entries_.size());
        if (!isNew) {
            Entry& known = entries_[entry->second];
            ++known.count;
            const auto behind = std::upper_bound(
                known.spots.begin(), known.spots.end(), spot, [](auto const& a, auto const& b) {
                    return a.position < b.position;
                });
            known.spots.insert(behind, spot);
            known.spots.resize(std::min(known.spots.size(), Finding::mostPlaces));
            return;
        }
    }
    entries_.push_back({reason, isFault, std::move(text), std::string(target), 1, {spot}});
}

void FileLog::sort() {
    std::stable_sort(entries_.begin(), entries_.end(), [](auto const& a, auto const& b) {
        return a.spots.front().position < b.spots.front().position;
    });
    byTarget_.clear(); // the places of the entries have changed
    std::stable_sort(omissions.begin(), omissions.end(), [](auto const& a, auto const& b) {
        return a.spot.position < b.spot.position;
    });
}

} // namespace velum::arxml
