#include "unimplemented.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdimension.h"

namespace Zorvane::metamodel::types::NSInterface {

QOB::String DimensionIntf::getDimensionExpression(QOB::Deviant) const {
    VELUM_FAIL_UNIMPLEMENTED(
        "The Dimension.DimensionExpression derived property is not yet implemented!");
    return {};
}

void DimensionIntf::setDimensionExpression(QOB::Deviant, QOB::String const&) {
    VELUM_FAIL_UNIMPLEMENTED(
        "The Dimension.DimensionExpression derived property is not yet implemented!");
}

} // namespace Zorvane::metamodel::types::NSInterface
