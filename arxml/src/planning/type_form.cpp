#include "planning/type_form.h"

namespace velum::arxml {

Element propertiesOf(Element type) {
    return type.child(element::swDataDefProps)
        .child(element::swDataDefPropsVariants)
        .child(element::swDataDefPropsConditional);
}

TypeForm formOf(Element type) {
    const std::string_view category = type.child(element::category).text();
    const Element properties = propertiesOf(type);
    const Element parts = type.child(element::subElements);
    const bool hasBaseType = static_cast<bool>(properties.child(element::baseTypeRef));
    const bool hasTarget = static_cast<bool>(properties.child(element::implementationDataTypeRef));
    if (category == "STRUCTURE") {
        return TypeForm::structure;
    }
    if (category == "ARRAY") {
        // An element that is an array of another type may be written without parts.
        return !parts && hasTarget ? TypeForm::reference : TypeForm::array;
    }
    if (category == "DATA_REFERENCE") {
        return TypeForm::pointer;
    }
    if (category == "VALUE") {
        return hasTarget && !hasBaseType ? TypeForm::reference : TypeForm::value;
    }
    if (category == "TYPE_REFERENCE") {
        return TypeForm::reference;
    }
    if (!category.empty()) {
        return TypeForm::other;
    }
    if (parts) {
        const Element first = parts.child(element::implementationDataTypeElement);
        return first.child(element::arraySize) ? TypeForm::array : TypeForm::structure;
    }
    return hasTarget ? TypeForm::reference : hasBaseType ? TypeForm::value : TypeForm::other;
}

char const* categoryOf(TypeForm form) {
    switch (form) {
    case TypeForm::value:
        return "VALUE";
    case TypeForm::reference:
        return "TYPE_REFERENCE";
    case TypeForm::array:
        return "ARRAY";
    case TypeForm::structure:
        return "STRUCTURE";
    case TypeForm::pointer:
        return "DATA_REFERENCE";
    case TypeForm::other:
        break;
    }
    return "";
}

} // namespace velum::arxml
