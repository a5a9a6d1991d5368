#include "velum_foundation/zorvane/visitationdomain.h"

namespace Zorvane {

Tessel::ModuleObjectDeleter& VisitationDomain::moduleObjects() {
    static Tessel::ModuleObjectDeleter deleter;
    return deleter;
}

} // namespace Zorvane
