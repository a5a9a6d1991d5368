#include "making/primitive_builder.h"

namespace velum::arxml {

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

types::PrimitiveType PrimitiveBuilder::makePart(TypePlan const& plan, Element properties) {
    types::PrimitiveType part(maker_.make(plan, {}));
    setProperties(part, plan, properties, true);
    return part;
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
