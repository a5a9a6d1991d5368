#include "findings/file_report.h"

#include <algorithm>
#include <utility>

namespace velum::arxml {

void FileReport::add(Place const& place,
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
        const auto [entry, isNew] = byTarget_.try_emplace(std::move(key), findings_.size());
        if (!isNew) {
            Finding& known = findings_[entry->second];
            ++known.count;
            const auto behind = std::upper_bound(
                known.places.begin(), known.places.end(), place, [](auto const& a, auto const& b) {
                    return a.position < b.position;
                });
            known.places.insert(behind, place);
            known.places.resize(std::min(known.places.size(), Finding::mostPlaces));
            return;
        }
    }
    findings_.push_back({reason, isFault, std::move(text), std::string(target), 1, {place}});
}

void FileReport::sort() {
    std::stable_sort(findings_.begin(), findings_.end(), [](auto const& a, auto const& b) {
        return a.places.front().position < b.places.front().position;
    });
    byTarget_.clear(); // the places of the findings have changed
    std::stable_sort(omissions.begin(), omissions.end(), [](auto const& a, auto const& b) {
        return a.place.position < b.place.position;
    });
}

} // namespace velum::arxml
