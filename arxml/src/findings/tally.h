#pragma once

#include "source/names.h"
#include "source/path_tree.h"

#include <cstdint>
#include <map>
#include <utility>
#include <vector>
#include <velum_arxml/findings/reason.h>
#include <velum_arxml/source/position.h>

namespace velum::arxml {

/// Where something stands: in the file and in the tree of names.
struct Spot {
    Position position;
    PathId path = PathTree::root; ///< Of the nearest element with a name.
};

/// What became of the elements of one file: every element that is met is in the end either
/// consumed or skipped, once.
class Tally {
public:
    struct Skip {
        std::uint64_t count = 0;
        Spot first; ///< The one that stands first in the file.
    };

    void meet(NameId name) { ++slot(met_, name); }
    void consume(NameId name) { ++slot(consumed_, name); }
    void skip(NameId name, Reason reason, Spot const& spot);

    std::uint64_t met(NameId name) const { return at(met_, name); }
    std::uint64_t consumed(NameId name) const { return at(consumed_, name); }
    std::uint64_t met() const;
    std::uint64_t consumed() const;
    std::uint64_t skipped() const;

    /// By name and reason.
    std::map<std::pair<NameId, Reason>, Skip> const& skips() const { return skips_; }

    /// Names from this one on were not met.
    NameId endOfNames() const { return static_cast<NameId>(met_.size()); }

    /// Whether consumed and skipped make up what was met, name by name.
    bool isBalanced() const;

private:
    using Counts = std::vector<std::uint64_t>; // by name

    static std::uint64_t& slot(Counts& counts, NameId name);
    static std::uint64_t at(Counts const& counts, NameId name);

    Counts met_;
    Counts consumed_;
    std::map<std::pair<NameId, Reason>, Skip> skips_;
};

} // namespace velum::arxml
