#include "updating/excerpt.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace velum::arxml {

Excerpt::Excerpt(std::vector<std::string_view> documents) : documents_(std::move(documents)) {
    for (Index i = 0; i < documents_.size(); ++i) {
        addCells(i);
    }
    link();
}

void Excerpt::addCells(Index document) {
    struct Pending {
        std::size_t begin;
        Reference reference;
    };
    std::vector<Pending> pending;
    std::vector<Index> maps; // whose set isn't at its end
    SourceText::Visitor visitor;
    visitor.onBase = [this](std::string const& package, SourceBase const& base) {
        bases_.add(package, base);
    };
    visitor.onReference = [&](SourceRef const& reference) {
        pending.push_back({reference.begin, referenceOf(reference)});
    };
    visitor.onCell =
        [&](std::string_view name, std::string const& path, std::size_t begin, std::size_t end) {
            const bool isMap = name == "DATA-TYPE-MAP";
            const auto index = static_cast<Index>(cells_.size());
            auto first = pending.end();
            while (first != pending.begin() && (first - 1)->begin > begin) {
                --first;
            }
            Range references{static_cast<Index>(references_.size()), 0};
            for (auto each = first; each != pending.end(); ++each) {
                references_.push_back(each->reference);
            }
            references.end = static_cast<Index>(references_.size());
            pending.erase(first, pending.end());
            cells_.push_back({document,
                              begin,
                              end,
                              paths_.keep(path),
                              name == "PHYSICAL-DIMENSION",
                              isMap,
                              references});
            if (isMap) {
                maps.push_back(index);
                return;
            }
            for (const Index map : std::exchange(maps, {})) {
                cells_[map].set = index;
            }
        };
    SourceText(documents_[document]).visit(visitor);
}

Excerpt::Reference Excerpt::referenceOf(SourceRef const& reference) {
    if (reference.text.starts_with('/')) {
        return {reference.text};
    }
    relatives_.push_back({reference, std::string(reference.package)});
    return {{}, static_cast<Index>(relatives_.size() - 1)};
}

std::string_view Excerpt::pathOf(Reference const& reference) {
    if (reference.relative == none) {
        return reference.path;
    }
    Relative& relative = relatives_[reference.relative];
    relative.reference.package = relative.package;
    relative.path = bases_.resolve(relative.reference);
    return relative.path;
}

void Excerpt::link() {
    byPath_.reserve(cells_.size());
    for (Index i = 0; i < cells_.size(); ++i) {
        if (!cells_[i].isMap) {
            byPath_.try_emplace(cells_[i].path, i);
        }
    }
    findTargets();
    findUsers();
}

void Excerpt::findTargets() {
    targets_.reserve(references_.size());
    for (Index i = 0; i < cells_.size(); ++i) {
        Cell& cell = cells_[i];
        cell.targets.begin = static_cast<Index>(targets_.size());
        for (Index each = cell.references.begin; each < cell.references.end; ++each) {
            if (const Index target = targetOf(references_[each], i); target != none) {
                targets_.push_back(target);
                ++cells_[target].users.end; // their number, until they get their place
            }
        }
        cell.targets.end = static_cast<Index>(targets_.size());
    }
}

void Excerpt::findUsers() {
    users_.resize(targets_.size());
    Index next = 0;
    for (Cell& cell : cells_) {
        const Index count = cell.users.end;
        cell.users = {next, next};
        next += count;
    }
    for (Index i = 0; i < cells_.size(); ++i) {
        for (const Index target : in(targets_, cells_[i].targets)) {
            users_[cells_[target].users.end++] = i;
        }
    }
}

/// The cell that has what stands at a path.
Excerpt::Index Excerpt::cellAt(std::string_view path) const {
    while (!path.empty()) {
        if (const auto found = byPath_.find(path); found != byPath_.end()) {
            return found->second;
        }
        path = path.substr(0, std::min(path.rfind('/'), path.size()));
    }
    return none;
}

/// What a reference is to, but for one of a cell to itself.
Excerpt::Index Excerpt::targetOf(Reference const& reference, Index user) {
    const Index target = cellAt(pathOf(reference));
    return target == user ? none : target;
}

void Excerpt::need(Index cell) {
    if (!std::exchange(cells_[cell].isNeeded, true)) {
        open_.push_back(cell);
    }
    if (cells_[cell].set != none) {
        cells_[cells_[cell].set].isNeeded = true; // without the rest of its maps
    }
}

void Excerpt::needUsers(Index cell) {
    for (const Index user : usersOf(cell)) {
        need(user);
    }
}

/// What the needed ones refer to, and what they are mapped to.
void Excerpt::needAllBelow() {
    while (!open_.empty()) {
        const Index cell = open_.back();
        open_.pop_back();
        for (const Index target : targetsOf(cell)) {
            need(target);
        }
        for (const Index user : usersOf(cell)) {
            if (cells_[user].isMap && targetsOf(user).front() == cell) {
                need(user);
            }
        }
    }
}

std::size_t Excerpt::placeOf(std::string_view path) const {
    const auto found = byPath_.find(path);
    return found != byPath_.end() && cells_[found->second].document == 0
               ? cells_[found->second].begin
               : std::string_view::npos;
}

/// The references of an element that isn't in the documents as it is here.
std::vector<Excerpt::Reference> Excerpt::referencesIn(std::string text, std::string_view around) {
    std::vector<Reference> references;
    SourceText::Visitor visitor;
    visitor.onReference = [&](SourceRef const& reference) {
        references.push_back(referenceOf(reference));
    };
    SourceText(changedTexts_.emplace_back(std::move(text)), around).visit(visitor);
    return references;
}

/// Finds what a cell refers to after the changes in it.
void Excerpt::noteChanges(Index cell) {
    Cell const& old = cells_[cell];
    std::vector<TextEdit> inside;
    for (auto each = std::lower_bound(
             changes_.begin(),
             changes_.end(),
             old.begin,
             [](TextEdit const&change, std::size_t place) { return change.begin < place; });
         old.document == 0 && each != changes_.end() && each->end <= old.end;
         ++each) {
        inside.push_back({each->begin - old.begin, each->end - old.begin, each->text});
    }
    if (!inside.empty()) {
        std::string text =
            applied(documents_[0].substr(old.begin, old.end - old.begin), std::move(inside));
        const std::string_view around = old.path.substr(0, old.path.rfind('/'));
        changed_[cell] = targetsOf(referencesIn(std::move(text), around), cell);
    }
}

std::vector<Excerpt::Index> Excerpt::targetsOf(std::vector<Reference> const& references,
                                               Index user) {
    std::vector<Index> targets;
    for (Reference const& each : references) {
        if (const Index target = targetOf(each, user); target != none) {
            targets.push_back(target);
        }
    }
    return targets;
}

/// Those that refer to what isn't there before the changes.
void Excerpt::addUsersOf(std::vector<Added> const& added, std::vector<Index>& users) {
    std::unordered_set<std::string_view> paths;
    for (Added const& each : added) {
        paths.insert(each.path);
    }
    const auto isInAdded = [&](Reference const& reference) {
        std::string_view path = pathOf(reference);
        while (!path.empty() && !paths.contains(path)) {
            path = path.substr(0, std::min(path.rfind('/'), path.size()));
        }
        return !path.empty();
    };
    for (Index i = 0; !paths.empty() && i < cells_.size(); ++i) {
        const auto first = references_.begin() + cells_[i].references.begin;
        const auto end = references_.begin() + cells_[i].references.end;
        if (std::any_of(first, end, isInAdded)) {
            users.push_back(i);
        }
    }
}

/// A dimension and its units depend on each other.
void Excerpt::addDimensions(std::span<Index const> targets, std::vector<Index>& users) const {
    for (const Index target : targets) {
        if (cells_[target].isDimension) {
            users.push_back(target);
            const std::span<Index const> others = usersOf(target);
            users.insert(users.end(), others.begin(), others.end());
        }
    }
}

void Excerpt::choose(std::vector<std::string> const& paths,
                     std::vector<TextEdit> changes,
                     std::vector<Added> const& added) {
    for (Cell& cell : cells_) {
        cell.isNeeded = false;
    }
    changed_.clear();
    changes_ = std::move(changes);
    std::stable_sort(changes_.begin(), changes_.end(), [](TextEdit const& a, TextEdit const& b) {
        return a.begin < b.begin;
    });
    std::vector<Index> chosen;
    chosen_ = paths; // also those of elements that are new or gone
    for (std::string const& path : paths) {
        const auto found = byPath_.find(path);
        if (found == byPath_.end()) {
            continue;
        }
        noteChanges(found->second);
        chosen.push_back(found->second);
        const std::span<Index const> users = usersOf(found->second);
        chosen.insert(chosen.end(), users.begin(), users.end());
        addDimensions(targetsOf(found->second), chosen);
    }
    for (Added const& each : added) {
        const std::string_view around(each.path.data(), each.path.rfind('/'));
        const std::vector<Index> targets = targetsOf(referencesIn(each.text, around), none);
        std::for_each(targets.begin(), targets.end(), [this](Index target) { need(target); });
        addDimensions(targets, chosen);
    }
    addUsersOf(added, chosen);
    for (const Index each : chosen) {
        need(each);
        needUsers(each);
        if (!cells_[each].isMap) {
            chosen_.emplace_back(cells_[each].path);
        } else if (!targetsOf(each).empty()) { // its type
            chosen_.emplace_back(cells_[targetsOf(each).front()].path);
        }
    }
    std::sort(chosen_.begin(), chosen_.end());
    chosen_.erase(std::unique(chosen_.begin(), chosen_.end()), chosen_.end());
    needAllBelow();
}

std::string Excerpt::text(std::size_t document) const {
    std::vector<TextEdit> cuts; // in order, none within another one
    for (Cell const& cell : cells_) {
        if (cell.document == document && !cell.isNeeded) {
            while (!cuts.empty() && cuts.back().begin > cell.begin) {
                cuts.pop_back();
            }
            cuts.push_back({cell.begin, cell.end, {}});
        }
    }
    if (document == 0) { // before what is cut at the same place
        cuts.insert(cuts.begin(), changes_.begin(), changes_.end());
    }
    return applied(documents_[document], std::move(cuts));
}

} // namespace velum::arxml
