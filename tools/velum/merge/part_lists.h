#pragma once

#include "merge/list_merge.h"
#include "merge/work.h"

#include <set>
#include <string>
#include <vector>

namespace velum::merge {

/// Merges the lists of parts that theirs changed: what is in them, and the order.
class PartLists {
public:
    explicit PartLists(Work& work) : work_(work) {}

    /// Of a part that was added, removed or renamed, or whose list is in another order.
    void add(diff::Change const& change);

    /// Whether ours removed a part that theirs changed, or something around it: a conflict. The
    /// part comes back if theirs counts.
    bool isGone(std::string const& path, std::string const& key);

    void merge();

private:
    /// The parts that an object owns by a property.
    struct List {
        std::string path; ///< Of the outermost object.
        std::string owner;
        std::string property;

        friend auto operator<=>(List const&, List const&) = default;
    };

    void addListOf(Side& side, QOB::ClassObject const& part, std::string const& path);
    void mergeList(List const& list);
    void settle(List const& list, ListVersions& versions);
    void setParts(List const& list, std::vector<std::string> const& keys);

    Work& work_;
    std::set<List> lists_;
    std::set<std::string> missing_;
    std::set<std::string> restored_;
};

} // namespace velum::merge
