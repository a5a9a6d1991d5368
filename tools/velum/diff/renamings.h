#pragma once

#include "diff/contents.h"

#include <qob/qob.h>
#include <string>
#include <utility>
#include <vector>

namespace velum::diff {

/// An object that has no partner in the other model.
struct Lone {
    QOB::ClassObject object;
    std::string path;    ///< Its path, or its place in what contains it.
    std::string where{}; ///< Only those with the same text here may be one object.
};

/// Places in two lists.
using Match = std::pair<std::size_t, std::size_t>;

/// Those of two lists that hold the same. Of several with the same content those are taken whose
/// paths end alike, the longer the better, and those that are left if they are one on either side;
/// the others aren't matched.
std::vector<Match>
matchContents(std::vector<Lone> const& left, std::vector<Lone> const& right, Contents& contents);

} // namespace velum::diff
