#pragma once

#include "tessel/moduleobject.h"

namespace Zorvane::metamodel::types {

/// This library while it is loaded.
struct Module {
    /// Objects that are deleted when the library is unloaded.
    static Tessel::ModuleObjectDeleter& moduleObjects();
};

} // namespace Zorvane::metamodel::types
