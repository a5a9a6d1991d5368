#pragma once

#include "tessel/moduleobject.h"
#include "velum_foundation/export.h"

namespace Zorvane {

/// The domain in which visitors know the metaclasses of this product; the kernel's have their own.
struct VELUM_FOUNDATION_EXPORT VisitationDomain {
    /// Owns the class tables of this domain and frees them when the library is unloaded.
    static Tessel::ModuleObjectDeleter& moduleObjects();
};

} // namespace Zorvane
