#pragma once

#include "velum_types/export.h"

namespace Zorvane::metamodel::types {

/// Starts the kernel and registers this package with it. To be called before anything that needs
/// the metamodel, from one thread. Later calls do nothing. Always returns true; what the start
/// raises is passed on, and the next call tries again.
VELUM_TYPES_EXPORT bool initialize();

} // namespace Zorvane::metamodel::types
