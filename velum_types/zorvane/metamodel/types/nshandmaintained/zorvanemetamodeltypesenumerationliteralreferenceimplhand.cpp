#include "unimplemented.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesenumerationliteralreference.h"

namespace Zorvane::metamodel::types::NSInterface {

QOB::Boolean EnumerationLiteralReferenceIntf::isComputable(QOB::Deviant) const {
    VELUM_FAIL_UNIMPLEMENTED(
        "The EnumerationLiteralReference.isComputable operation is not yet implemented!");
    return {};
}

QOB::String EnumerationLiteralReferenceIntf::stringValue(QOB::Deviant) const {
    VELUM_FAIL_UNIMPLEMENTED(
        "The EnumerationLiteralReference.stringValue operation is not yet implemented!");
    return {};
}

} // namespace Zorvane::metamodel::types::NSInterface
