#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesenumeration.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesenumerationliteral.h"

namespace Zorvane::metamodel::types::NSInterface {

// The default value if there is one, else the value of the first literal; bounds play no part.
QOB::Real
EnumerationIntf::getZorvane_metamodel_types_Enumeration_GroundValue(QOB::Deviant deviant) const {
    if (hasDefaultValue(deviant)) {
        return getDefaultValue(deviant);
    }
    auto const literals = const_cast<EnumerationIntf*>(this)->getOwnedLiterals(deviant);
    if (!literals.empty()) {
        int const first = literals.front().getValue(); // also of a literal without a value
        return QOB::Real(first);
    }
    return QOB::Real(0.0);
}

} // namespace Zorvane::metamodel::types::NSInterface
