#pragma once

#include "describe/metamodel.h"
#include "html/out.h"

namespace velum::html {

/// Draws a class with its supers above, its subclasses below and, to the right, the classes that
/// its properties refer to: a diamond where it owns them.
void drawClass(Out& out, describe::Type const& type);

} // namespace velum::html
