#pragma once

#include "merge/conflict.h"

#include <cstddef>
#include <qob/qob.h>
#include <vector>

namespace velum::merge {

/// What came out of a merge.
struct Outcome {
    std::vector<Conflict> conflicts; ///< By path; those too that the resolutions decided.
    std::size_t changeCount = 0;     ///< Changes of theirs that ours has now.

    /// Whether all conflicts are decided. If not, ours is as before.
    bool isMerged() const;
};

/// Brings the changes from `base` to `theirs` into `ours`, which was made from the same base: each
/// object and part by its path, each property by itself. The changes are made in a branch of ours,
/// which is merged into it if no conflict is left open.
///
/// What both changed to the same is no conflict. What one side renamed has its new name in the
/// result, with all references to it.
Outcome mergeModels(QOB::Model const& base,
                    QOB::Model const& ours,
                    QOB::Model const& theirs,
                    Resolutions const& resolutions);

} // namespace velum::merge
