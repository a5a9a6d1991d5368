#pragma once

#include "describe/metamodel.h"
#include "html/out.h"

namespace velum::html {

/// Writes the reference of the metamodel as one page, or the section of one type as a page; false
/// if the sink fails.
bool writeMetamodel(describe::Metamodel const& metamodel, Sink sink);
bool writeMetamodel(describe::Type const& type, Sink sink);

} // namespace velum::html
