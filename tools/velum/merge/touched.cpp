#include "merge/touched.h"

#include "merge/side.h"

#include <algorithm>
#include <utility>

namespace velum::merge {

namespace {

/// Whether a place is in a part, or is the part itself.
bool isIn(std::string_view place, std::string_view part) {
    return part.empty() || (place.substr(0, part.size()) == part &&
                            (place.size() == part.size() || place[part.size()] == '/'));
}

} // namespace

std::string_view listName(std::string_view property) {
    return property.substr(0, property.find('['));
}

Touched::Touched(diff::Comparison const& comparison, std::set<std::string> kept)
    : kept_(std::move(kept)) {
    for (diff::Change const& change : comparison.changed) {
        byPath_[change.path].push_back(&change);
    }
    for (diff::Single const& each : comparison.added) {
        added_.insert(each.path);
    }
    for (diff::Single const& each : comparison.removed) {
        removed_.insert(each.path);
    }
    for (diff::Renaming const& each : comparison.renamed) { // what couldn't be aligned
        removed_.insert(each.from);
        added_.insert(each.to);
    }
}

std::vector<diff::Change const*> const& Touched::at(std::string const& path) const {
    static std::vector<diff::Change const*> const none;
    auto const found = byPath_.find(path);
    return found != byPath_.end() ? found->second : none;
}

bool Touched::isChanged(std::string const& path, std::string_view part) const {
    auto const& changes = at(path);
    return kept_.contains(keyOf(path, std::string(part))) ||
           std::any_of(changes.begin(), changes.end(), [&](diff::Change const* each) {
               return isIn(each->part, part);
           });
}

bool Touched::hasOtherClass(std::string const& path, std::string_view part) const {
    auto const& changes = at(path);
    return std::any_of(changes.begin(), changes.end(), [&](diff::Change const* each) {
        return each->kind == diff::ChangeKind::metaclass && isIn(part, each->part);
    });
}

bool Touched::isChanged(diff::Change const& change) const {
    auto const& changes = at(change.path);
    std::string_view const list = listName(change.property);
    return std::any_of(changes.begin(), changes.end(), [&](diff::Change const* each) {
        return each->part == change.part && listName(each->property) == list &&
               (each->property == change.property || each->property == list ||
                change.property == list);
    });
}

std::string Touched::namesOf(std::string const& path, std::string_view part) const {
    constexpr int most = 4;
    std::vector<std::string> names;
    for (diff::Change const* const each : at(path)) {
        if (!isIn(each->part, part)) {
            continue;
        }
        std::string_view const inside =
            std::string_view(each->part)
                .substr(std::min(part.size() + (part.empty() ? 0 : 1), each->part.size()));
        std::string name(inside);
        name += (name.empty() || each->property.empty() ? "" : " ") + each->property;
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
    }
    std::string text = "changed";
    for (std::size_t i = 0; i != std::min<std::size_t>(names.size(), most); ++i) {
        text += (i == 0 ? ": " : ", ") + names[i];
    }
    return text + (names.size() > most ? ", ..." : "");
}

} // namespace velum::merge
