#pragma once

#include "merge/conflict.h"

#include <cstddef>
#include <qob/qob.h>
#include <set>
#include <string>

namespace velum::merge {

/// What is left to do about names once they are aligned.
struct Alignment {
    std::size_t count = 0;          ///< Renamings of theirs that ours has now.
    std::set<std::string> keptKeys; ///< What ours renamed and theirs removed.
    std::set<std::string> leftKeys; ///< What theirs renamed and ours removed: it isn't added.
};

/// Finds what either side renamed and gives it the new name in all three models, so that what
/// belongs together has one path.
Alignment alignNames(QOB::Model const& base,
                     QOB::Model const& ours,
                     QOB::Model const& theirs,
                     ConflictLog& log);

} // namespace velum::merge
