#include "dictionary/number.h"
#include "report/printers.h"
#include "show/texts.h"

#include <algorithm>
#include <vector>

namespace velum::show {

using dictionary::numberText;

namespace {

/// "unsigned 8-bit "; nothing is said about a size that is unknown.
template <class Handle>
std::string widthText(const Handle& type) {
    std::string text = type.isSigned() == QOB::Boolean(true) ? "signed " : "unsigned ";
    const types::DataSize length = type.getLength();
    if (length.getValue().isValid()) {
        text += std::to_string(static_cast<int>(length.getValue()));
        text += "-bit ";
    }
    return text;
}

std::string lineText(const types::FixedPoint& type) {
    return numberText(type.getBias()) + " + " + numberText(type.getSlope()) + " x";
}

std::string scalarText(const types::Real& type) {
    if (const types::Integer integer(type); integer.isValid()) {
        return widthText(integer) + "integer";
    }
    if (const types::FixedPoint fixed(type); fixed.isValid()) {
        return widthText(fixed) + "fixed point " + lineText(fixed);
    }
    if (const types::FloatingPoint floating(type); floating.isValid()) {
        const bool isSingle =
            floating.getKind() == types::FloatingPointKind(types::FloatingPointKind::IEEE_Single);
        return isSingle ? "32-bit float" : "64-bit float";
    }
    if (const types::Enumeration enumeration(type); enumeration.isValid()) {
        return widthText(enumeration) + "enumeration of " +
               std::to_string(enumeration.getOwnedLiterals().size());
    }
    return "boolean";
}

/// Nothing without a bound.
std::string rangeText(const types::Real& type) {
    const bool hasMin = type.hasMinValue();
    const bool hasMax = type.hasMaxValue();
    if (!hasMin && !hasMax) {
        return {};
    }
    const auto isOpen = [](const QOB::Boolean& flag) { return flag == QOB::Boolean(true); };
    std::string text = hasMin && !isOpen(type.isMinOpen()) ? ", [" : ", (";
    text += hasMin ? numberText(type.getMinValue()) : "-inf";
    text += ", ";
    text += hasMax ? numberText(type.getMaxValue()) : "inf";
    text += hasMax && !isOpen(type.isMaxOpen()) ? "]" : ")";
    return text;
}

std::string primitiveText(const types::PrimitiveType& type) {
    const types::Real real(type);
    std::string text = scalarText(real) + rangeText(real);
    const types::CompuMethod method = type.getCompuMethod();
    if (type.hasUnit()) {
        text += ", unit " + unitText(type.getUnit());
    } else if (method.isValid() && method.hasUnit()) {
        text += ", unit " + unitText(method.getUnit());
    }
    if (method.isValid()) {
        text += ", by " + nameOf(method);
    }
    return text;
}

std::string tableText(const types::LookupTableType& table) {
    const QOB::Integer size = table.getDimensions();
    return textOf(table.getCategory()) + " of " +
           (size.isValid() ? std::to_string(static_cast<int>(size)) : std::string("?")) + " values";
}

/// "name: ", or nothing for a type without a name of its own.
std::string ownName(const foundation::ValueType& type) {
    const std::string name = nameOf(type);
    return type.hasExternalId() && !name.empty() ? name + ": " : std::string();
}

/// By a fault of its file an array may be one of itself, or of arrays of itself.
std::string arrayText(const types::Matrix& outermost) {
    std::string text;
    std::vector<types::Matrix> around;
    types::Matrix matrix = outermost;
    while (around.size() < deepestType &&
           std::find(around.begin(), around.end(), matrix) == around.end()) {
        around.push_back(matrix);
        text += "array [" + dimensionsText(matrix) + "] of ";
        const foundation::ValueType base = matrix.getBaseType();
        if (!base.isValid()) {
            return text + "an unknown type";
        }
        matrix = types::Matrix(base);
        if (!matrix.isValid()) {
            return text + usedTypeText(base);
        }
        text += ownName(base);
    }
    return text + "...";
}

} // namespace

std::string textOf(const QOB::String& text) {
    return text.isValid() ? report::inOneLine(std::string(text)) : std::string();
}

std::string nameOf(const foundation::NamedElement& element) {
    return element.isValid() && element.hasName() ? textOf(element.getName()) : std::string();
}

std::string unitText(const types::Unit& unit) {
    const std::string symbol = unit.hasSymbol() ? textOf(unit.getSymbol()) : std::string();
    return symbol.empty() ? nameOf(unit) : symbol;
}

std::string dimensionsText(const types::Matrix& matrix) {
    std::vector<std::string> names;
    for (const QOB::String name : matrix.getSymbolicDimensionses()) {
        names.push_back(textOf(name));
    }
    std::string text;
    std::size_t nextName = 0;
    for (const QOB::Integer size : matrix.getDimensionses()) {
        text += text.empty() ? "" : " x ";
        if (!size.isValid()) {
            text += "?";
        } else if (static_cast<int>(size) == 0 && !names.empty()) {
            // One name stands for all sizes that are the same constant.
            text += names[std::min(nextName++, names.size() - 1)];
        } else {
            text += std::to_string(static_cast<int>(size));
        }
    }
    return text.empty() ? "?" : text;
}

std::string typeText(const foundation::ValueType& type) {
    if (const types::PrimitiveType primitive(type); primitive.isValid()) {
        return primitiveText(primitive);
    }
    if (const types::Matrix matrix(type); matrix.isValid()) {
        return arrayText(matrix);
    }
    if (const types::Structure structure(type); structure.isValid()) {
        return "structure";
    }
    if (const types::LookupTableType table(type); table.isValid()) {
        return tableText(table);
    }
    if (const types::SharedAxisType shared(type); shared.isValid()) {
        return "shared axis";
    }
    if (const types::VoidPointer pointer(type); pointer.isValid()) {
        const std::string policy =
            pointer.hasSwImplPolicy() ? ", " + textOf(pointer.getSwImplPolicy()) : std::string();
        const types::SwBaseType base = pointer.getSwBaseType();
        return "pointer" + (base.isValid() ? " to " + nameOf(base) : std::string()) + policy;
    }
    return "type";
}

std::string usedTypeText(const foundation::ValueType& type) {
    return ownName(type) + typeText(type);
}

} // namespace velum::show
