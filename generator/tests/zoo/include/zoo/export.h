#pragma once

#include "tessel/moduleobject.h"

/// What the generated zoo needs of a library around it.
#define ZOO_EXPORT

namespace Park {

struct VisitationDomain {
    static Tessel::ModuleObjectDeleter& moduleObjects();
};

} // namespace Park
