#pragma once

#include "tessel/moduleobject.h"
#include "velum_foundation/export.h"

namespace Zorvane {

/// The domain in which visitors know the metaclasses of this product; the kernel's have their own.
struct VELUM_FOUNDATION_EXPORT VisitationDomain {
    /// Owner of the class tables of this domain; they go when the library goes.
    static Tessel::ModuleObjectDeleter& moduleObjects();
};

} // namespace Zorvane
