#include "making/type_maker.h"

#include "making/type_table.h"

namespace velum::arxml {

using foundation::ValueType;

namespace {

/// The sign and the size of the integers of a base type; a size that the file doesn't give is
/// invalid. Both are always set: their defaults are those of another type.
template <class Handle>
void setWidth(Handle const& type, BaseType const* baseType) {
    if (baseType == nullptr) {
        return;
    }
    type.setIsSigned(QOB::Boolean(baseType->encoding.isSigned));
    type.setLength(types::DataSize(baseType->bits ? QOB::Integer(*baseType->bits) : QOB::Integer(),
                                   types::DataSizeUnitKind::bit));
}

} // namespace

ValueType TypeMaker::make(TypePlan const& plan, Identity const& identity) {
    if (plan.baseType != nullptr) {
        consumeBaseType(context_, *plan.baseType);
    }
    return (this->*TypeTable::row(plan.kind).make)(plan, identity);
}

ValueType TypeMaker::makeInteger(TypePlan const& plan, Identity const& identity) {
    const auto integer = identity.make<types::Integer>(objects_);
    setWidth(integer, plan.baseType);
    return ValueType(integer);
}

/// physical = bias + slope * internal; with a fraction length of 0 the slope is the fractional one
/// however the two are put together.
ValueType TypeMaker::makeFixedPoint(TypePlan const& plan, Identity const& identity) {
    const auto type = identity.make<types::FixedPoint>(objects_);
    setWidth(type, plan.baseType);
    const Line line = methods_.lineOf(plan.method).value_or(Line());
    type.setBias(QOB::Real(line.bias));
    type.setFractionalSlope(QOB::Real(line.slope));
    type.setFractionLength(types::DataSize(QOB::Integer(0), types::DataSizeUnitKind::bit));
    return ValueType(type);
}

ValueType TypeMaker::makeFloatingPoint(TypePlan const& plan, Identity const& identity) {
    constexpr std::int32_t singleBits = 32;
    const auto type = identity.make<types::FloatingPoint>(objects_);
    const bool isSingle = plan.baseType != nullptr && plan.baseType->bits == singleBits;
    type.setKind(isSingle ? types::FloatingPointKind::IEEE_Single
                          : types::FloatingPointKind::IEEE_Double);
    return ValueType(type);
}

ValueType TypeMaker::makeEnumeration(TypePlan const& plan, Identity const& identity) {
    const auto type = identity.make<types::Enumeration>(objects_);
    setWidth(type,
             plan.baseType != nullptr && plan.baseType->isInteger() ? plan.baseType : nullptr);
    methodObjects_.addLiterals(type, plan.method);
    return ValueType(type);
}

} // namespace velum::arxml
