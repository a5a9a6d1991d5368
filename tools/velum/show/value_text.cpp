#include "show/texts.h"

#include <velum_arxml/notation/number.h>

namespace velum::show {

using arxml::numberText;

namespace {

/// The terms of a polynomial in `variable`, "3 + 0.5 p".
std::string polynomialText(QOB::Sequence<QOB::Real> const& coefficients, char const* variable) {
    std::string text;
    int power = 0;
    for (const QOB::Real coefficient : coefficients) {
        const double number = coefficient;
        if (number != 0.0 || coefficients.size() == 1) {
            text += text.empty() ? "" : " + ";
            text += numberText(number);
            if (power > 0) {
                text += ' ';
                text += variable;
                text += power > 1 ? "^" + std::to_string(power) : std::string();
            }
        }
        ++power;
    }
    return text;
}

std::string sizesText(QOB::Sequence<QOB::Integer> const& sizes) {
    std::string text;
    for (const QOB::Integer size : sizes) {
        text += text.empty() ? "" : " x ";
        text += size.isValid() ? std::to_string(static_cast<int>(size)) : "?";
    }
    return text;
}

std::string contentText(types::ApplicationValueSpecification const& content) {
    const auto texts = content.getVs();
    std::string text;
    for (const QOB::String value : texts) {
        text += text.empty() ? "" : " ";
        text += textOf(value);
    }
    if (texts.size() == 1) {
        return text;
    }
    const std::string sizes = sizesText(content.getDimensionses());
    return (sizes.empty() ? "{" : sizes + " {") + text + "}";
}

std::string tableText(types::LookupTableSpecification const& table) {
    std::string text = contentText(types::ApplicationValueSpecification(table));
    for (const types::LookupTableSpecification axis : table.getAxeses()) {
        text += " over " + contentText(types::ApplicationValueSpecification(axis));
    }
    return text;
}

std::string labelled(foundation::NamedElement const& element, std::string const& text) {
    const std::string name = nameOf(element);
    return name.empty() ? text : name + " = " + text;
}

} // namespace

std::string methodText(types::CompuMethod const& method) {
    const types::CompuMethodCategory category = method.getCategory();
    std::string text = category.toString();
    if (method.hasUnit()) {
        text += ", unit " + unitText(method.getUnit());
    }
    const auto numerators = method.getCalToInternalCompuNumerators();
    const auto denominators = method.getCalToInternalCompuDenominators();
    if (!numerators.empty() || !denominators.empty()) {
        text += ", internal = (" + polynomialText(numerators, "p") + ") / (" +
                polynomialText(denominators, "p") + ")";
    }
    return text;
}

std::string valueText(foundation::ValueSpecification const& value) {
    if (const types::LiteralReal literal(value); literal.isValid()) {
        const QOB::Real number = literal.getValue();
        return number.isValid() ? numberText(number) : "?";
    }
    if (const types::EnumerationLiteralReference reference(value); reference.isValid()) {
        return "\"" + textOf(reference.getLiteralText()) + "\"";
    }
    if (const types::ConstantReference reference(value); reference.isValid()) {
        const types::ConstantSpecification constant = reference.getValue();
        return constant.isValid() ? nameOf(constant) : "?";
    }
    if (const types::LookupTableSpecification table(value); table.isValid()) {
        return tableText(table);
    }
    if (const types::ApplicationValueSpecification content(value); content.isValid()) {
        return contentText(content);
    }
    std::string text;
    if (const types::MatrixValueSpecification matrix(value); matrix.isValid()) {
        for (const types::Cell cell : matrix.getOwnedCells()) {
            text += text.empty() ? "" : ", ";
            text += valueText(cell.getValue());
        }
    } else if (const types::StructureValueSpecification record(value); record.isValid()) {
        for (const types::Slot slot : record.getOwnedSlots()) {
            text += text.empty() ? "" : ", ";
            text += labelled(slot, valueText(slot.getValue()));
        }
    } else {
        return "?";
    }
    return "{" + text + "}";
}

} // namespace velum::show
