#pragma once

#include "source/text_arena.h"
#include "updating/renaming.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velum::arxml {

/// Some elements of documents with everything that a reader needs to make the same objects of them
/// as of the whole: so that changes of a large document can be judged without reading all of it,
/// and before they are made.
class Excerpt {
public:
    /// The documents that are read together. They are referred to. The first is the one that
    /// changes.
    explicit Excerpt(std::vector<std::string_view> documents);

    /// Where the element at a path begins in the first document; npos if it isn't there.
    std::size_t placeOf(std::string_view path) const;

    /// An element that the changes of the first document bring in.
    struct Added {
        std::string path;
        std::string text;
    };

    /// Takes the elements at these paths and those that refer to them, with what these need, all as
    /// they are after the changes; instead of what has been taken before.
    void choose(std::vector<std::string> const& paths,
                std::vector<TextEdit> changes,
                std::vector<Added> const& added);

    /// The chosen elements: what is made of them is as if everything was read.
    std::vector<std::string> const& chosen() const { return chosen_; }

    /// A document after the changes, without the elements that aren't needed.
    std::string text(std::size_t document) const;

private:
    using Index = std::uint32_t;
    static constexpr Index none = static_cast<Index>(-1);

    /// A path, or the place of a relative reference in `relatives_`.
    struct Reference {
        std::string_view path;
        Index relative = none;
    };
    struct Relative {
        SourceRef reference;
        std::string package; ///< Which the reference has a view of only while it is visited.
        std::string path{};
    };

    struct Range {
        Index begin = 0;
        Index end = 0;
    };

    /// What can be left out: an element of a package, or a map in a set of maps.
    struct Cell {
        Index document;
        std::size_t begin;
        std::size_t end;
        std::string_view path; ///< In `paths_`.
        bool isDimension;
        bool isMap;
        Range references{}; ///< In `references_`, in order.
        bool isNeeded = false;
        Index set = none; ///< Of a map: what it is in.
        Range targets{};  ///< In `targets_`.
        Range users{};    ///< In `users_`.
    };

    void addCells(Index document);
    void link();
    void findTargets();
    void findUsers();
    Reference referenceOf(SourceRef const& reference);
    std::vector<Reference> referencesIn(std::string text, std::string_view around);
    void noteChanges(Index cell);
    void addUsersOf(std::vector<Added> const& added, std::vector<Index>& users);
    void addDimensions(std::span<Index const> targets, std::vector<Index>& users) const;
    std::vector<Index> targetsOf(std::vector<Reference> const& references, Index user);
    Index targetOf(Reference const& reference, Index user);
    std::string_view pathOf(Reference const& reference);
    Index cellAt(std::string_view path) const;
    static std::span<Index const> in(std::vector<Index> const& all, Range range) {
        return std::span(all).subspan(range.begin, range.end - range.begin);
    }
    std::span<Index const> targetsOf(Index cell) const {
        const auto changed = changed_.find(cell);
        return changed != changed_.end() ? std::span<Index const>(changed->second)
                                         : in(targets_, cells_[cell].targets);
    }
    std::span<Index const> usersOf(Index cell) const { return in(users_, cells_[cell].users); }
    void need(Index cell);
    void needUsers(Index cell);
    void needAllBelow();

    std::vector<std::string_view> documents_;
    std::vector<Cell> cells_; ///< Of each document in the order of their ends.
    std::vector<Reference> references_;
    std::vector<Index> targets_;
    std::vector<Index> users_;
    Bases bases_; ///< Of all documents, when they are looked through.
    std::deque<Relative> relatives_;
    TextArena paths_;
    boost::unordered_flat_map<std::string_view, Index, std::hash<std::string_view>> byPath_;
    std::vector<TextEdit> changes_;                         ///< Of the first document, in order.
    std::unordered_map<Index, std::vector<Index>> changed_; ///< The targets of cells with changes.
    std::deque<std::string> changedTexts_;
    std::vector<Index> open_; ///< Needed, and what they refer to isn't yet.
    std::vector<std::string> chosen_;
};

} // namespace velum::arxml
