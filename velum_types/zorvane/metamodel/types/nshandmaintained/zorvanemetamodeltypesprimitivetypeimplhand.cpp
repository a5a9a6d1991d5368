#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesprimitivetype.h"

namespace Zorvane::metamodel::types::NSInterface {

// Zero for every type, whatever its bounds are; only an enumeration knows better.
QOB::Real PrimitiveTypeIntf::getGroundValue(QOB::Deviant) const {
    return QOB::Real(0.0);
}

} // namespace Zorvane::metamodel::types::NSInterface
