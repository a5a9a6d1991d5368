#include "planning/type_planner.h"

#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace velum::arxml {

namespace {

/// Whether the model has a format for floating-point numbers of that size.
constexpr bool hasFormat(std::int32_t bits) {
    constexpr std::int32_t single = 32;
    constexpr std::int32_t twice = 64;
    return bits == single || bits == twice;
}

} // namespace

Element TypePlanner::methodOf(Element properties) {
    const Element method =
        references_.target(properties.child(element::compuMethodRef), {element::compuMethod});
    if (method && methods_.at(method).kind == CompuMethodPlan::Kind::none) {
        return {}; // reported where the reference is set
    }
    return method;
}

Element TypePlanner::constraintOf(Element properties) {
    return references_.target(properties.child(element::dataConstrRef), {element::dataConstr});
}

TypeKind TypePlanner::kindOf(BaseType const& baseType, Element method) const {
    switch (baseType.encoding.values) {
    case Encoding::Values::integer:
        return isEnumeration(method) ? TypeKind::enumeration : TypeKind::integer;
    case Encoding::Values::floatingPoint:
        return hasFormat(baseType.bits.value_or(0)) ? TypeKind::floatingPoint : TypeKind::none;
    case Encoding::Values::boolean:
        return TypeKind::boolean;
    case Encoding::Values::nothing:
    case Encoding::Values::other:
        break;
    }
    return TypeKind::none;
}

TypePlan const& TypePlanner::plan(Element type) {
    TypePlan& plan = slot(type);
    if (plan.isDecided) {
        return plan;
    }
    if (type.is(element::applicationPrimitiveDataType)) {
        planApplicationPrimitive(type, plan);
    } else if (type.is(element::applicationArrayDataType)) {
        plan.kind = TypeKind::matrix;
    } else if (type.is(element::applicationRecordDataType)) {
        plan.kind = TypeKind::structure;
    } else {
        planImplementation(type);
    }
    plan.isDecided = true;
    return plan;
}

/// Follows the type references from one type to the end, for all types on the way.
void TypePlanner::planImplementation(Element type) {
    std::vector<Element> way;
    std::unordered_set<ElementStore::Index> onTheWay;
    Element end = type;
    while (end && !slot(end).isDecided && onTheWay.insert(end.index()).second) {
        way.push_back(end);
        TypePlan& plan = slot(end);
        end = step(end, plan) ? plan.target : Element();
    }
    if (end && !slot(end).isDecided) { // met on the way
        TypePlan& last = slot(way.back());
        last.reason = Reason::dangling;
        last.target = Element();
        last.isDecided = true;
        context_.refuse(propertiesOf(way.back()).child(element::implementationDataTypeRef),
                        Reason::dangling,
                        "The type references lead back to this type.");
        way.pop_back();
    }
    for (; !way.empty(); way.pop_back()) {
        TypePlan& plan = slot(way.back());
        if (plan.target) {
            finishReference(way.back(), plan);
        }
        plan.isDecided = true;
    }
}

/// Decides a type that refers to no other one; true if it does and the target is to be decided.
bool TypePlanner::step(Element type, TypePlan& plan) {
    const Element properties = propertiesOf(type);
    const TypeForm form = formOf(type);
    if (form != TypeForm::other && type.child(element::category).text().empty()) {
        inferCategory(type, categoryOf(form));
    }
    switch (form) {
    case TypeForm::value:
        planValue(type, plan);
        return false;
    case TypeForm::array:
        plan.kind = TypeKind::matrix;
        return false;
    case TypeForm::structure:
        plan.kind = TypeKind::structure;
        return false;
    case TypeForm::pointer:
        plan.kind = TypeKind::voidPointer;
        return false;
    case TypeForm::other:
        return false;
    case TypeForm::reference:
        break;
    }
    const Element reference = properties.child(element::implementationDataTypeRef);
    plan.target = references_.target(reference, {element::implementationDataType});
    if (!reference) {
        context_.find(type, Reason::dangling, "The type refers to no IMPLEMENTATION-DATA-TYPE.");
    }
    if (!plan.target) {
        plan.reason = context_.account.markedReason(reference).value_or(Reason::dangling);
    }
    return static_cast<bool>(plan.target);
}

void TypePlanner::planValue(Element type, TypePlan& plan) {
    const Element reference = propertiesOf(type).child(element::baseTypeRef);
    if (!reference) {
        context_.find(type, Reason::dangling, "The type refers to no SW-BASE-TYPE.");
        plan.reason = Reason::dangling;
        return;
    }
    const Element baseType = references_.target(reference, {element::swBaseType});
    if (!baseType) {
        plan.reason = context_.account.markedReason(reference).value_or(Reason::dangling);
        return;
    }
    plan.baseType = &baseTypes_.at(baseType);
    if (kindOf(*plan.baseType, {}) != TypeKind::none) {
        plan.method = methodOf(propertiesOf(type));
        plan.constraint = constraintOf(propertiesOf(type));
        plan.kind = kindOf(*plan.baseType, plan.method);
    }
}

/// A type is what the type it refers to is, but its own method and constraint come first.
void TypePlanner::finishReference(Element type, TypePlan& plan) {
    TypePlan const& target = slot(plan.target);
    if (target.kind == TypeKind::none) {
        plan.reason = Reason::dangling;
        references_.reportNoObject(propertiesOf(type).child(element::implementationDataTypeRef),
                                   plan.target);
        plan.target = Element();
        return;
    }
    plan.origin = target.origin ? target.origin : plan.target;
    plan.baseType = target.baseType;
    plan.kind = target.kind;
    plan.method = methodOf(propertiesOf(type));
    plan.constraint = constraintOf(propertiesOf(type));
    if (!plan.method) {
        plan.method = target.method;
    }
    if (!plan.constraint) {
        plan.constraint = target.constraint;
    }
    if (plan.baseType != nullptr) {
        plan.kind = kindOf(*plan.baseType, plan.method);
    }
}

void TypePlanner::inferCategory(Element type, char const* category) const {
    context_.find(type,
                  Reason::inferred,
                  std::string("The type has no category; it is taken as ") + category + ".");
}

void TypePlanner::planApplicationPrimitive(Element type, TypePlan& plan) {
    static const std::unordered_map<std::string_view, TypeKind> kinds = {
        {"VALUE", TypeKind::floatingPoint},
        {"BOOLEAN", TypeKind::boolean},
        {"VAL_BLK", TypeKind::matrix},
        {"CURVE", TypeKind::lookupTable},
        {"MAP", TypeKind::lookupTable},
        {"CUBOID", TypeKind::lookupTable},
        {"CUBE_4", TypeKind::lookupTable},
        {"CUBE_5", TypeKind::lookupTable},
        {"COM_AXIS", TypeKind::sharedAxis},
        {"RES_AXIS", TypeKind::sharedAxis},
        {"CURVE_AXIS", TypeKind::sharedAxis},
    };
    std::string_view category = type.child(element::category).text();
    if (category.empty()) {
        inferCategory(type, "VALUE");
        category = "VALUE";
    }
    const auto found = kinds.find(category);
    if (found == kinds.end()) {
        return;
    }
    plan.kind = found->second;
    plan.method = methodOf(propertiesOf(type));
    plan.constraint = constraintOf(propertiesOf(type));
    TypeMaps::Map const* const map = maps_.find(type);
    if (map != nullptr && map->implementation) {
        plan.target = map->implementation;
        this->plan(plan.target);
    }
    if (plan.kind == TypeKind::floatingPoint) {
        planApplicationValue(plan);
    }
}

/// An application type has no base type of its own: what it is mapped to decides.
void TypePlanner::planApplicationValue(TypePlan& plan) {
    TypePlan const* const target = plan.target ? &slot(plan.target) : nullptr;
    plan.baseType = target == nullptr ? nullptr : target->baseType;
    if (isEnumeration(plan.method)) {
        plan.kind = TypeKind::enumeration;
    } else if (target == nullptr || plan.baseType == nullptr) {
        plan.kind = TypeKind::floatingPoint;
    } else if (plan.baseType->isInteger()) {
        plan.kind = methods_.lineOf(plan.method) ? TypeKind::fixedPoint : TypeKind::integer;
    } else if (target->kind != TypeKind::none) {
        plan.kind = target->kind;
    }
}

TypePlan TypePlanner::planOfPart(Element properties) {
    TypePlan plan;
    plan.method = methodOf(properties);
    plan.constraint = constraintOf(properties);
    const Element baseType =
        references_.target(properties.child(element::baseTypeRef), {element::swBaseType});
    plan.kind = isEnumeration(plan.method) ? TypeKind::enumeration : TypeKind::floatingPoint;
    if (baseType) {
        plan.baseType = &baseTypes_.at(baseType);
        const TypeKind kind = kindOf(*plan.baseType, plan.method);
        plan.kind = kind == TypeKind::none ? plan.kind : kind;
    }
    plan.isDecided = true;
    return plan;
}

} // namespace velum::arxml
