#include "updating/excerpt.h"

#include <algorithm>
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
        if (reference.text.substr(0, 1) == "/") {
            pending.push_back({reference.begin, {reference.text}});
        } else {
            pending.push_back({reference.begin, {{}, static_cast<Index>(relatives_.size())}});
            relatives_.push_back({reference, std::string(reference.package)});
        }
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
            const Index target = cellAt(pathOf(references_[each]));
            if (target != none && target != i) {
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
        for (const Index target : targetsOf(cells_[i])) {
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

void Excerpt::need(Index cell) {
    if (!std::exchange(cells_[cell].isNeeded, true)) {
        open_.push_back(cell);
    }
    if (cells_[cell].set != none) {
        cells_[cells_[cell].set].isNeeded = true; // without the rest of its maps
    }
}

void Excerpt::needUsers(Index cell) {
    for (const Index user : usersOf(cells_[cell])) {
        need(user);
    }
}

/// What the needed ones refer to, and what they are mapped to.
void Excerpt::needAllBelow() {
    while (!open_.empty()) {
        const Index cell = open_.back();
        open_.pop_back();
        for (const Index target : targetsOf(cells_[cell])) {
            need(target);
        }
        for (const Index user : usersOf(cells_[cell])) {
            if (cells_[user].isMap && targetsOf(cells_[user]).front() == cell) {
                need(user);
            }
        }
    }
}

void Excerpt::choose(std::vector<std::string> const& paths) {
    std::vector<Index> chosen;
    chosen_ = paths; // also those of elements that are gone
    for (std::string const& path : paths) {
        const auto found = byPath_.find(path);
        if (found == byPath_.end()) {
            continue;
        }
        chosen.push_back(found->second);
        Cell const& cell = cells_[found->second];
        const std::span<Index const> users = usersOf(cell);
        chosen.insert(chosen.end(), users.begin(), users.end());
        for (const Index target : targetsOf(cell)) { // units of a dimension depend on each other
            if (cells_[target].isDimension) {
                const std::span<Index const> others = usersOf(cells_[target]);
                chosen.insert(chosen.end(), others.begin(), others.end());
            }
        }
    }
    for (const Index each : chosen) {
        need(each);
        needUsers(each);
        if (!cells_[each].isMap) {
            chosen_.emplace_back(cells_[each].path);
        } else if (!targetsOf(cells_[each]).empty()) { // its type
            chosen_.emplace_back(cells_[targetsOf(cells_[each]).front()].path);
        }
    }
    std::sort(chosen_.begin(), chosen_.end());
    chosen_.erase(std::unique(chosen_.begin(), chosen_.end()), chosen_.end());
    needAllBelow();
}

std::string Excerpt::text(std::size_t document) const {
    std::vector<Cell const*> cut; // in order, none within another one
    for (Cell const& cell : cells_) {
        if (cell.document == document && !cell.isNeeded) {
            while (!cut.empty() && cut.back()->begin > cell.begin) {
                cut.pop_back();
            }
            cut.push_back(&cell);
        }
    }
    const std::string_view whole = documents_[document];
    std::string text;
    std::size_t at = 0;
    for (Cell const* const cell : cut) {
        text += whole.substr(at, cell->begin - at);
        at = cell->end;
    }
    text += whole.substr(at);
    return text;
}

} // namespace velum::arxml
