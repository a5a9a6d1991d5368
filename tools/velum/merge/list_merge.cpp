#include "merge/list_merge.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace velum::merge {

namespace {

using Names = std::vector<std::string>;

/// A list that knows what it has.
class Listed {
public:
    explicit Listed(Names const& names) : names_(names), known_(names.begin(), names.end()) {}

    Names const& names() const { return names_; }
    bool has(std::string const& name) const { return known_.contains(name); }

    /// Those that another list has too.
    Names common(Listed const& other) const {
        Names found;
        std::copy_if(names_.begin(),
                     names_.end(),
                     std::back_inserter(found),
                     [&](std::string const& name) { return other.has(name); });
        return found;
    }

private:
    Names const& names_;
    std::unordered_set<std::string_view> known_;
};

class ListMerger {
public:
    ListMerger(ListVersions const& versions, bool areTheirsFirst)
        : base_(versions.base),
          ours_(versions.ours),
          theirs_(versions.theirs),
          kept_(versions.kept),
          areTheirsFirst_(areTheirsFirst) {}

    MergedList merge() {
        bool const isTheirs = isOrderOfTheirs();
        Listed const& leading = isTheirs ? theirs_ : ours_;
        Listed const& other = isTheirs ? ours_ : theirs_;
        for (std::string const& name : leading.names()) {
            if (stays(name, other)) {
                names_.push_back(name);
            }
        }
        insertRest(leading, other, isTheirs == areTheirsFirst_);
        return {std::move(names_), isAmbiguous_};
    }

private:
    /// Whose order the result has: that of the only side that changed it.
    bool isOrderOfTheirs() {
        Names const ours = ours_.common(theirs_);
        Names const theirs = theirs_.common(ours_);
        if (ours == theirs) {
            return areTheirsFirst_; // no matter
        }
        Names const old = base_.common(Listed(ours));
        bool const isOursMoved = Listed(ours).common(base_) != old;
        bool const isTheirsMoved = Listed(theirs).common(base_) != old;
        if (isOursMoved != isTheirsMoved) {
            return isTheirsMoved;
        }
        isAmbiguous_ = true;
        return areTheirsFirst_;
    }

    bool stays(std::string const& name, Listed const& other) const {
        return other.has(name) || !base_.has(name) || kept_.contains(name);
    }

    /// Puts what only the other side has behind what stands before it there.
    void insertRest(Listed const& leading, Listed const& other, bool isLeadingFirst) {
        std::size_t place = 0;
        for (std::string const& name : other.names()) {
            if (leading.has(name)) {
                place = stays(name, other) ? placeOf(name, place) + 1 : place;
                continue;
            }
            if (!stays(name, leading)) {
                continue;
            }
            std::size_t behind = place;
            while (behind < names_.size() && isOnlyIn(leading, other, names_[behind])) {
                ++behind; // what the leading side put there
            }
            isAmbiguous_ = isAmbiguous_ || behind != place;
            place = isLeadingFirst ? behind : place;
            names_.insert(names_.begin() + static_cast<std::ptrdiff_t>(place), name);
            ++place;
        }
    }

    bool isOnlyIn(Listed const& leading, Listed const& other, std::string const& name) const {
        return leading.has(name) && !other.has(name) && !base_.has(name);
    }

    /// Looks from a place on first: mostly both lists have the same order.
    std::size_t placeOf(std::string const& name, std::size_t from) const {
        auto const start = names_.begin() + static_cast<std::ptrdiff_t>(from);
        auto found = std::find(start, names_.end(), name);
        found = found != names_.end() ? found : std::find(names_.begin(), start, name);
        return static_cast<std::size_t>(found - names_.begin());
    }

    Listed base_;
    Listed ours_;
    Listed theirs_;
    std::set<std::string> const& kept_;
    bool areTheirsFirst_;
    Names names_;
    bool isAmbiguous_ = false;
};

} // namespace

MergedList mergeLists(ListVersions const& versions, bool areTheirsFirst) {
    return ListMerger(versions, areTheirsFirst).merge();
}

} // namespace velum::merge
