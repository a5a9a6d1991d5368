#include "unimplemented.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesconstantspecification.h"

namespace Zorvane::metamodel::types::NSInterface {

QOB::String ConstantSpecificationIntf::getConstantExpression(QOB::Deviant) const {
    VELUM_FAIL_UNIMPLEMENTED("The ConstantSpecification.constantExpression derived property is not "
                             "yet implemented!");
}

void ConstantSpecificationIntf::setConstantExpression(QOB::Deviant, QOB::String const&) {
    VELUM_FAIL_UNIMPLEMENTED("The ConstantSpecification.constantExpression derived property is not "
                             "yet implemented!");
}

} // namespace Zorvane::metamodel::types::NSInterface
