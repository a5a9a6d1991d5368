#include "making/primitive_builder.h"

#include <stdexcept>

namespace velum::arxml {

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

void PrimitiveBuilder::buildBaseTypes(Catalogue const& catalogue) {
    for (const Element baseType : catalogue.ofKind(element::swBaseType)) {
        baseTypeObjects_.add(baseType, objects_.makeOf<types::SwBaseType>(baseType));
        if (baseType.child(element::category).text() == "FIXED_LENGTH") {
            context_.account.consume(baseType.child(element::category));
        }
    }
}

types::SwBaseType PrimitiveBuilder::baseType(Element reference) {
    const Element target = references_.target(reference, {element::swBaseType});
    if (!target) {
        return {};
    }
    context_.account.consume(reference);
    return baseTypeObjects_.find(target);
}

types::PrimitiveType PrimitiveBuilder::make(TypePlan const& plan, Identity const& identity) {
    if (plan.baseType != nullptr) {
        consumeBaseType(context_, *plan.baseType);
    }
    switch (plan.metaclass) {
    case Metaclass::integer: {
        const auto integer = identity.make<types::Integer>(objects_);
        setWidth(integer, plan.baseType);
        return types::PrimitiveType(integer);
    }
    case Metaclass::boolean:
        return types::PrimitiveType(identity.make<types::Boolean>(objects_));
    case Metaclass::fixedPoint:
        return makeFixedPoint(plan, identity);
    case Metaclass::floatingPoint:
        return makeFloatingPoint(plan, identity);
    case Metaclass::enumeration:
        return makeEnumeration(plan, identity);
    default:
        throw std::logic_error("This is no metaclass of primitive types.");
    }
}

/// physical = bias + slope * internal; with a fraction length of 0 the slope is the fractional one
/// however the two are put together.
types::PrimitiveType PrimitiveBuilder::makeFixedPoint(TypePlan const& plan,
                                                      Identity const& identity) {
    const auto type = identity.make<types::FixedPoint>(objects_);
    setWidth(type, plan.baseType);
    const Line line = methods_.lineOf(plan.method).value_or(Line());
    type.setBias(QOB::Real(line.bias));
    type.setFractionalSlope(QOB::Real(line.slope));
    type.setFractionLength(types::DataSize(QOB::Integer(0), types::DataSizeUnitKind::bit));
    return types::PrimitiveType(type);
}

types::PrimitiveType PrimitiveBuilder::makeFloatingPoint(TypePlan const& plan,
                                                         Identity const& identity) {
    constexpr std::int32_t singleBits = 32;
    const auto type = identity.make<types::FloatingPoint>(objects_);
    const bool isSingle = plan.baseType != nullptr && plan.baseType->bits == singleBits;
    type.setKind(isSingle ? types::FloatingPointKind::IEEE_Single
                          : types::FloatingPointKind::IEEE_Double);
    return types::PrimitiveType(type);
}

types::PrimitiveType PrimitiveBuilder::makeEnumeration(TypePlan const& plan,
                                                       Identity const& identity) {
    const auto type = identity.make<types::Enumeration>(objects_);
    setWidth(type,
             plan.baseType != nullptr && plan.baseType->isInteger() ? plan.baseType : nullptr);
    methodObjects_.addLiterals(type, plan.method);
    return types::PrimitiveType(type);
}

void PrimitiveBuilder::setProperties(types::PrimitiveType const& type,
                                     TypePlan const& plan,
                                     Element properties,
                                     bool isApplication) {
    type.setIsApplication(QOB::Boolean(isApplication));
    if (plan.method) {
        type.setCompuMethod(methodObjects_.find(plan.method));
    }
    const Element methodRef = properties.child(element::compuMethodRef);
    if (const Element own = references_.target(methodRef, {element::compuMethod})) {
        if (own == plan.method) {
            context_.account.consume(methodRef);
        } else {
            references_.reportNoObject(methodRef, own);
        }
    }
    units_.setUnit(type, properties.child(element::unitRef));
    if (plan.constraint) {
        type.setDataConstr(constraints_.find(plan.constraint));
        const Element own = properties.child(element::dataConstrRef);
        if (references_.target(own, {element::dataConstr})) {
            context_.account.consume(own);
        }
        const bool isMethodKnown = plan.method || !methodRef;
        constraints_.setBounds(types::Real(type),
                               plan.constraint,
                               isApplication,
                               isMethodKnown ? std::optional(plan.method) : std::nullopt);
    }
    if (const types::SwBaseType base = baseType(properties.child(element::baseTypeRef));
        base.isValid()) {
        type.setSwBaseType(base);
    }
}

} // namespace velum::arxml
