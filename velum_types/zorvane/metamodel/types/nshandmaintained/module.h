#pragma once

#include "tessel/moduleobject.h"

namespace Zorvane::metamodel::types {

/// This library, as long as it is loaded.
struct Module {
    /// What ends with the library.
    static Tessel::ModuleObjectDeleter& moduleObjects();
};

} // namespace Zorvane::metamodel::types
