#pragma once

#include "html/lookup.h"
#include "html/out.h"

namespace velum::html {

/// Pictures of a lookup table with its numbers beside them: a curve, a map with its family of
/// curves, or a row of maps. With `before`, the same table in another release, both stand side by
/// side and what differs is marked.
void writeTable(Out& out, Lookup const& lookup, Lookup const* before = nullptr);

/// The picture of a curve or a map as a file of its own; false if the table has more axes.
bool writePicture(Out& out, Lookup const& lookup);

} // namespace velum::html
