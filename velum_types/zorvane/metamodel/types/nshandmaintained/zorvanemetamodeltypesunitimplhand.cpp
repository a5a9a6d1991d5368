#include "unimplemented.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesunit.h"

namespace Zorvane::metamodel::types::NSInterface {

QOB::Real UnitIntf::convert(QOB::Deviant, QOB::Real&, Unit) const {
    VELUM_FAIL_UNIMPLEMENTED("The Unit.convert operation is not yet implemented!");
}

QOB::Real UnitIntf::convertToBase(QOB::Deviant, QOB::Real&) const {
    VELUM_FAIL_UNIMPLEMENTED("The Unit.convertToBase operation is not yet implemented!");
}

QOB::ImmutableSequence<QOB::Real> UnitIntf::getFactorAndOffsetToBase(QOB::Deviant) const {
    VELUM_FAIL_UNIMPLEMENTED("The Unit.getFactorAndOffsetToBase operation is not yet implemented!");
}

QOB::Boolean UnitIntf::hasSameDimensions(QOB::Deviant, Unit) const {
    VELUM_FAIL_UNIMPLEMENTED("The Unit.hasSameDimensions operation is not yet implemented!");
}

QOB::ImmutableSequence<QOB::Integer> UnitIntf::getBaseDimensionExponents(QOB::Deviant) const {
    VELUM_FAIL_UNIMPLEMENTED(
        "The Unit.getBaseDimensionExponents operation is not yet implemented!");
}

QOB::String UnitIntf::getUnitExpression(QOB::Deviant) const {
    VELUM_FAIL_UNIMPLEMENTED("The Unit.UnitExpression derived property is not yet implemented!");
}

void UnitIntf::setUnitExpression(QOB::Deviant, QOB::String const&) {
    VELUM_FAIL_UNIMPLEMENTED("The Unit.UnitExpression derived property is not yet implemented!");
}

} // namespace Zorvane::metamodel::types::NSInterface
