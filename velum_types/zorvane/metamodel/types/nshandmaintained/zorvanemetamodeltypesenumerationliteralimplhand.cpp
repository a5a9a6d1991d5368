#include "unimplemented.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesenumerationliteral.h"

namespace Zorvane::metamodel::types::NSInterface {

void EnumerationLiteralIntf::setDefaultValue(QOB::Deviant) {
    VELUM_FAIL_UNIMPLEMENTED(
        "The EnumerationLiteral.setDefaultValue operation is not yet implemented!");
}

} // namespace Zorvane::metamodel::types::NSInterface
