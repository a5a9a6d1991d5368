#include "report/printers.h"
#include "show/texts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>
#include <velum_arxml/notation/coefficients.h>
#include <velum_arxml/notation/number.h>
#include <velum_arxml/notation/scripts.h>
#include <velum_arxml/notation/tool_notes.h>

namespace velum::show {

using arxml::numberText;

namespace {

/// "unsigned 8-bit "; nothing is said about a size that is unknown.
template <class Handle>
std::string widthText(Handle const& type) {
    std::string text = type.isSigned() == QOB::Boolean(true) ? "signed " : "unsigned ";
    const types::DataSize length = type.getLength();
    if (length.getValue().isValid()) {
        text += std::to_string(static_cast<int>(length.getValue()));
        text += "-bit ";
    }
    return text;
}

/// Whole numbers of 64 bits with all their digits.
std::string boundText(double number) {
    constexpr double exactlyHeld = 9007199254740992.0; // 2 to the power of 53
    constexpr double most = 18446744073709551616.0;
    const bool isLong = std::abs(number) > exactlyHeld && std::abs(number) <= most;
    if (!isLong || std::trunc(number) != number) {
        return numberText(number);
    }
    std::array<char, 32> digits{};
    const auto [end, error] = std::to_chars(
        digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
    return {digits.data(), end};
}

std::string lineText(types::FixedPoint const& type) {
    return numberText(type.getBias()) + " + " + numberText(type.getSlope()) + " x";
}

std::string scalarText(types::Real const& type) {
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

/// A range of values; without a bound an end is open.
struct Range {
    struct End {
        std::optional<double> value;
        bool isOpen = true;
        std::string exact{}; ///< What the file says, if the value is rounded.
    };
    End lower;
    End upper;

    bool isUnbounded() const { return !lower.value && !upper.value; }
};

/// The limits of a type, in the numbers that they are given in.
Range rangeOf(types::Real const& type) {
    const auto end = [&type](bool hasValue,
                             QOB::Real const& value,
                             QOB::Boolean const& isOpen,
                             char const* key) {
        Range::End read;
        if (hasValue) {
            read.value = static_cast<double>(value);
            read.isOpen = isOpen == QOB::Boolean(true);
            read.exact = report::inOneLine(arxml::tool_note::get(type, key).value_or(""));
        }
        return read;
    };
    return {
        end(type.hasMinValue(), type.getMinValue(), type.isMinOpen(), arxml::tool_note::minValue),
        end(type.hasMaxValue(), type.getMaxValue(), type.isMaxOpen(), arxml::tool_note::maxValue)};
}

/// "[0, 255)"
std::string rangeText(Range const& range) {
    const auto number = [](Range::End const& end, char const* unbounded) {
        if (!end.exact.empty()) {
            return end.exact;
        }
        return end.value ? boundText(*end.value) : std::string(unbounded);
    };
    return (range.lower.isOpen ? "(" : "[") + number(range.lower, "-inf") + ", " +
           number(range.upper, "inf") + (range.upper.isOpen ? ")" : "]");
}

/// The line from internal to physical values; none if the method is none.
std::optional<arxml::Line> lineOf(types::CompuMethod const& method) {
    using Category = types::CompuMethodCategory;
    const Category category =
        method.isValid() ? method.getCategory() : Category(Category::Identical);
    arxml::Line line;
    if (category == Category(Category::Identical)) {
        return line;
    }
    arxml::Coefficients toInternal;
    for (const QOB::Real number : method.getCalToInternalCompuNumerators()) {
        toInternal.numerator.push_back(number);
    }
    for (const QOB::Real number : method.getCalToInternalCompuDenominators()) {
        toInternal.denominator.push_back(number);
    }
    const bool isLine = !toInternal.numerator.empty() && !toInternal.denominator.empty() &&
                        arxml::readLine(toInternal, line);
    return isLine ? std::optional(line) : std::nullopt;
}

Range physical(Range range, arxml::Line const& line) {
    for (Range::End* const end : {&range.lower, &range.upper}) {
        if (end->value) {
            end->value = line.bias + line.slope * *end->value;
            end->exact.clear();
        }
    }
    if (line.slope < 0.0) {
        std::swap(range.lower, range.upper);
    }
    return range;
}

/// Where a unit says what the numbers are, the limits are physical too; those of an implementation
/// type are internal and said to be so where the two differ.
std::string rangeAndUnitText(types::PrimitiveType const& type, types::Unit const& unit) {
    const Range range = rangeOf(types::Real(type));
    std::string unitPart = unit.isValid() ? ", unit " + unitText(unit) : std::string();
    if (range.isUnbounded()) {
        return unitPart;
    }
    const bool isPhysical = type.isApplication() == QOB::Boolean(true) || !unit.isValid();
    const std::optional<arxml::Line> line = lineOf(type.getCompuMethod());
    if (isPhysical || (line && line->bias == 0.0 && line->slope == 1.0)) {
        return ", " + rangeText(range) + unitPart;
    }
    const std::string internal = ", internal " + rangeText(range);
    return line ? ", " + rangeText(physical(range, *line)) + unitPart + internal
                : unitPart + internal;
}

std::string primitiveText(types::PrimitiveType const& type) {
    const types::CompuMethod method = type.getCompuMethod();
    const types::Unit unit =
        type.hasUnit() || !method.isValid() ? type.getUnit() : method.getUnit();
    std::string text = scalarText(types::Real(type)) + rangeAndUnitText(type, unit);
    if (method.isValid()) {
        text += ", by " + nameOf(method);
    }
    return text;
}

/// The model counts over all axes, and can't where a shared axis is an empty one.
QOB::Integer sizeOf(types::LookupTableType const& table) {
    for (const types::Axis axis : table.getAxeses()) {
        if (axis.hasSharedAxis() && !axis.getSharedAxis().hasAxis()) {
            return {};
        }
    }
    return table.getDimensions();
}

std::string tableText(types::LookupTableType const& table) {
    const QOB::Integer size = sizeOf(table);
    return textOf(table.getCategory()) + " of " +
           (size.isValid() ? std::to_string(static_cast<int>(size)) : std::string("?")) + " values";
}

/// "name: ", or nothing for a type without a name of its own.
std::string ownName(foundation::ValueType const& type) {
    const std::string name = nameOf(type);
    return type.hasExternalId() && !name.empty() ? name + ": " : std::string();
}

/// By a fault of its file an array may be one of itself, or of arrays of itself.
std::string arrayText(types::Matrix const& outermost) {
    std::string text;
    std::vector<types::Matrix> around;
    types::Matrix matrix = outermost;
    while (around.size() < deepestType &&
           std::find(around.begin(), around.end(), matrix) == around.end()) {
        around.push_back(matrix);
        text += "array [" + dimensionsText(matrix) + "] of ";
        const foundation::ValueType base = matrix.getBaseType();
        if (!base.isValid()) {
            return text + unknownTypeText(matrix);
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

std::string textOf(QOB::String const& text) {
    return text.isValid() ? report::inOneLine(std::string(text)) : std::string();
}

std::string nameOf(foundation::NamedElement const& element) {
    return element.isValid() && element.hasName() ? textOf(element.getName()) : std::string();
}

std::string unknownTypeText(QOB::ClassObject const& object) {
    const auto name = arxml::tool_note::get(object, arxml::tool_note::missingType);
    return "an unknown type" + (name ? " (" + report::inOneLine(*name) + ")" : "");
}

std::string unitText(types::Unit const& unit) {
    if (const auto name = arxml::tool_note::get(unit, arxml::tool_note::displayName)) {
        return report::inOneLine(*name);
    }
    std::string symbol = unit.hasSymbol() ? textOf(unit.getSymbol()) : std::string();
    if (symbol.empty()) {
        return nameOf(unit);
    }
    for (const QOB::String part : unit.getSuperscripts()) {
        symbol += arxml::superscript(textOf(part));
    }
    for (const QOB::String part : unit.getSubscripts()) {
        symbol += arxml::subscript(textOf(part));
    }
    return symbol;
}

std::string dimensionsText(types::Matrix const& matrix) {
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

std::string typeText(foundation::ValueType const& type) {
    if (const types::PrimitiveType primitive(type); primitive.isValid()) {
        return primitiveText(primitive);
    }
    if (const types::Matrix matrix(type); matrix.isValid()) {
        return arrayText(matrix);
    }
    if (const types::Complex complex(type); complex.isValid()) {
        const types::Real base = complex.getBaseType();
        return "complex number" +
               (base.isValid() ? " of two " + usedTypeText(base) : std::string());
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

std::string usedTypeText(foundation::ValueType const& type) {
    return ownName(type) + typeText(type);
}

} // namespace velum::show
