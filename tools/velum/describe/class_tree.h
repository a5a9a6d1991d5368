#pragma once

#include "describe/metamodel.h"

#include <cstddef>
#include <vector>

namespace velum::describe {

/// A class at its place in a tree.
struct TreeEntry {
    Type const* type;
    std::size_t depth; ///< 0 for a root.
};

/// The classes of some packages as a tree, each followed by those below it; siblings by name. A
/// class stands below the first of its supers that is there, and is a root if there is none.
std::vector<TreeEntry> classTree(std::vector<Package const*> const& packages);

} // namespace velum::describe
