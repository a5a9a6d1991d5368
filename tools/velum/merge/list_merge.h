#pragma once

#include <set>
#include <string>
#include <vector>

namespace velum::merge {

/// A list of distinct names, and what two sides made of it.
struct ListVersions {
    std::vector<std::string> base;
    std::vector<std::string> ours;
    std::vector<std::string> theirs;
    std::set<std::string> kept{}; ///< Stay although one side removed them.
};

struct MergedList {
    std::vector<std::string> names;
    /// Both sides put different things in one place, or both changed the order: the order of
    /// `names` is one of several.
    bool isAmbiguous = false;
};

/// Has what both sides have and what one of them added, in the order of the side that changed it.
/// Where that is ambiguous, `areTheirsFirst` decides.
MergedList mergeLists(ListVersions const& versions, bool areTheirsFirst = false);

} // namespace velum::merge
