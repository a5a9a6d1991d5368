#include "diff/renamings.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace velum::diff {

namespace {

using Indexes = std::vector<std::size_t>;

/// Those on either side that hold the same.
struct Group {
    Indexes left;
    Indexes right;
};

/// The last names of a path, at most `count`.
std::string_view endOf(std::string_view path, int count) {
    std::size_t start = path.size();
    while (count-- > 0 && start != 0 && start != std::string_view::npos) {
        start = path.rfind('/', start - 1);
    }
    return start == std::string_view::npos ? path : path.substr(start);
}

/// The places of paths by their ends.
std::unordered_map<std::string_view, Indexes>
byEnd(std::vector<Lone> const& list, Indexes const& indexes, int count) {
    std::unordered_map<std::string_view, Indexes> ends;
    for (std::size_t const index : indexes) {
        ends[endOf(list[index].path, count)].push_back(index);
    }
    return ends;
}

class Matcher {
public:
    Matcher(std::vector<Lone> const& left, std::vector<Lone> const& right)
        : left_(left), right_(right) {}

    void match(Group group) {
        constexpr int mostNames = 16;
        for (int count = mostNames; count != 0 && isAmbiguous(group); --count) {
            matchEnds(group, count);
        }
        if (group.left.size() == 1 && group.right.size() == 1) {
            matches_.emplace_back(group.left.front(), group.right.front());
        }
    }

    std::vector<Match> take() {
        std::sort(matches_.begin(), matches_.end());
        return std::move(matches_);
    }

private:
    static bool isAmbiguous(Group const& group) {
        return !group.left.empty() && !group.right.empty() &&
               group.left.size() + group.right.size() > 2;
    }

    /// Takes those out of the group that are the only ones with their end on either side.
    void matchEnds(Group& group, int count) {
        auto const rights = byEnd(right_, group.right, count);
        std::unordered_set<std::size_t> leftTaken;
        std::unordered_set<std::size_t> rightTaken;
        for (auto const& [end, indexes] : byEnd(left_, group.left, count)) {
            auto const found = rights.find(end);
            if (found == rights.end() || indexes.size() != 1 || found->second.size() != 1) {
                continue;
            }
            matches_.emplace_back(indexes.front(), found->second.front());
            leftTaken.insert(indexes.front());
            rightTaken.insert(found->second.front());
        }
        std::erase_if(group.left, [&](std::size_t index) { return leftTaken.contains(index); });
        std::erase_if(group.right, [&](std::size_t index) { return rightTaken.contains(index); });
    }

    std::vector<Lone> const& left_;
    std::vector<Lone> const& right_;
    std::vector<Match> matches_;
};

} // namespace

std::vector<Match>
matchContents(std::vector<Lone> const& left, std::vector<Lone> const& right, Contents& contents) {
    if (left.empty() || right.empty()) {
        return {};
    }
    std::map<std::pair<std::string, int>, Group> groups;
    for (std::size_t i = 0; i != left.size(); ++i) {
        groups[{left[i].where, contents.of(left[i].object)}].left.push_back(i);
    }
    for (std::size_t i = 0; i != right.size(); ++i) {
        groups[{right[i].where, contents.of(right[i].object)}].right.push_back(i);
    }
    Matcher matcher(left, right);
    for (auto const& [key, group] : groups) {
        matcher.match(group);
    }
    return matcher.take();
}

} // namespace velum::diff
