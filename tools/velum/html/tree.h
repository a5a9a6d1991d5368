#pragma once

#include "html/contents.h"
#include "html/out.h"

#include <vector>

namespace velum::html {

/// The packages as a tree with a link to each object; entries stand by package.
void writeTree(Out& out, std::vector<Entry> const& entries);

} // namespace velum::html
