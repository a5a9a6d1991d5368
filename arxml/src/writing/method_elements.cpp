#include "writing/element_output.h"

#include <optional>
#include <tuple>
#include <velum_arxml/notation/coefficients.h>
#include <velum_arxml/notation/number.h>
#include <velum_arxml/notation/tool_notes.h>

namespace velum::arxml {

using foundation::ValueType;

namespace {

struct Text {
    std::string name;
    QOB::Integer value;
    friend bool operator==(Text const&, Text const&) = default;
};

std::vector<Text> textsOf(types::Enumeration const& enumeration) {
    std::vector<Text> texts;
    for (const types::EnumerationLiteral literal : enumeration.getOwnedLiterals()) {
        texts.push_back({nameOf(literal), literal.getValue()});
    }
    return texts;
}

/// The texts of a method are those of the enumerations that use it.
std::vector<Text> textsOf(ElementOutput const& out, types::CompuMethod const& method) {
    std::optional<std::vector<Text>> texts;
    for (const types::PrimitiveType type : method.getPrimitiveTypes()) {
        const types::Enumeration enumeration(type);
        if (!enumeration.isValid()) {
            continue;
        }
        if (!texts) {
            texts = textsOf(enumeration);
        } else if (*texts != textsOf(enumeration)) {
            out.remark(Remark::contradiction,
                       "The enumerations with this method have different literals; those of the "
                       "first one are written.");
        }
    }
    return texts.value_or(std::vector<Text>());
}

/// A table of texts that no type takes its literals from is one of bit fields.
bool isBitField(types::CompuMethod const& method) {
    bool hasOther = false;
    for (const types::PrimitiveType type : method.getPrimitiveTypes()) {
        if (types::Enumeration(type).isValid()) {
            return false;
        }
        hasOther = hasOther || types::Integer(type).isValid() ||
                   (types::FloatingPoint(type).isValid() && bool(type.isApplication()));
    }
    return hasOther;
}

std::string_view categoryOf(types::CompuMethod const& method) {
    using Category = types::CompuMethodCategory;
    const Category category = method.getCategory();
    if (category == Category::Linear) {
        return "LINEAR";
    }
    if (category == Category::RatFunc) {
        return "RAT_FUNC";
    }
    if (category == Category::TextTable) {
        return isBitField(method) ? "BITFIELD_TEXTTABLE" : "TEXTTABLE";
    }
    return category == Category::LinearAndTextTable ? "SCALE_LINEAR_AND_TEXTTABLE" : "IDENTICAL";
}

void writeNumbers(XmlWriter& xml, std::string_view tag, std::vector<double> const& numbers) {
    const OpenElement list(xml, tag);
    for (const double number : numbers) {
        xml.leaf("V", numberInFile(number));
    }
}

void writeCoefficients(XmlWriter& xml, Coefficients const& coefficients) {
    const OpenElement scale(xml, "COMPU-SCALE");
    const OpenElement rational(xml, "COMPU-RATIONAL-COEFFS");
    writeNumbers(xml, "COMPU-NUMERATOR", coefficients.numerator);
    writeNumbers(xml, "COMPU-DENOMINATOR", coefficients.denominator);
}

void writeText(ElementOutput const& out, Text const& text) {
    if (!text.value.isValid()) {
        out.noPlace("The literal \"" + text.name + "\" has no value; it isn't written.");
        return;
    }
    const OpenElement scale(out.xml, "COMPU-SCALE");
    const std::string value = std::to_string(static_cast<int>(text.value));
    out.xml.leaf("LOWER-LIMIT", "INTERVAL-TYPE", "CLOSED", value);
    out.xml.leaf("UPPER-LIMIT", "INTERVAL-TYPE", "CLOSED", value);
    const OpenElement constant(out.xml, "COMPU-CONST");
    out.xml.leaf("VT", text.name);
}

/// What the method's lists hold; none if there is no function in them.
std::optional<Coefficients> coefficientsOf(ElementOutput const& out,
                                           types::CompuMethod const& method) {
    Coefficients held;
    for (const QOB::Real number : method.getCalToInternalCompuNumerators()) {
        held.numerator.push_back(number);
    }
    for (const QOB::Real number : method.getCalToInternalCompuDenominators()) {
        held.denominator.push_back(number);
    }
    if (held.numerator.empty() && held.denominator.empty()) {
        return std::nullopt;
    }
    using Category = types::CompuMethodCategory;
    const Category category = method.getCategory();
    // NOLINTNEXTLINE(misc-redundant-expression): three constants
    const bool hasPlace = category == Category::Linear || category == Category::RatFunc ||
                          category == Category::LinearAndTextTable;
    const bool isQuotient = !held.numerator.empty() && !held.denominator.empty();
    if (!hasPlace || !isQuotient) {
        out.noPlace("The coefficients of the method have no place in its category.");
        return std::nullopt;
    }
    return held;
}

void writeScales(ElementOutput const& out, types::CompuMethod const& method) {
    const std::optional<Coefficients> toInternal = coefficientsOf(out, method);
    std::optional<Coefficients> toPhysical;
    if (toInternal && method.getCategory() != types::CompuMethodCategory::RatFunc) {
        toPhysical = inverted(*toInternal);
        if (toPhysical->numerator.empty() || !areEquivalent(inverted(*toPhysical), *toInternal)) {
            toPhysical.reset();
        }
    }
    {
        const OpenElement direction(out.xml, "COMPU-INTERNAL-TO-PHYS", OpenElement::When::ifUsed);
        const OpenElement scales(out.xml, "COMPU-SCALES", OpenElement::When::ifUsed);
        if (toPhysical) {
            writeCoefficients(out.xml, *toPhysical);
        }
        for (Text const& text : textsOf(out, method)) {
            writeText(out, text);
        }
    }
    if (toInternal) {
        const OpenElement direction(out.xml, "COMPU-PHYS-TO-INTERNAL");
        const OpenElement scales(out.xml, "COMPU-SCALES");
        writeCoefficients(out.xml, *toInternal);
    }
}

/// The bounds of a type as a file tells them.
struct Bounds {
    QOB::Real lower;
    QOB::Real upper;
    bool isLowerOpen = true;
    bool isUpperOpen = true;
    std::string lowerText;
    std::string upperText;

    explicit Bounds(types::Real const& type)
        : lower(type.hasMinValue() ? type.getMinValue() : QOB::Real()),
          upper(type.hasMaxValue() ? type.getMaxValue() : QOB::Real()),
          isLowerOpen(bool(type.isMinOpen())),
          isUpperOpen(bool(type.isMaxOpen())),
          lowerText(tool_note::get(type, tool_note::minValue).value_or(std::string())),
          upperText(tool_note::get(type, tool_note::maxValue).value_or(std::string())) {}

    friend bool operator==(Bounds const&, Bounds const&) = default;

    bool isEmpty() const {
        return !lower.isValid() && !upper.isValid() && isLowerOpen && isUpperOpen;
    }
};

void writeLimit(ElementOutput const& out,
                std::string_view tag,
                QOB::Real limit,
                bool isOpen,
                std::string const& exact) {
    if (limit.isValid()) {
        const std::string text = exact.empty() || readRealNumber(exact).value != double(limit)
                                     ? numberInFile(limit)
                                     : exact;
        out.xml.leaf(tag, "INTERVAL-TYPE", isOpen ? "OPEN" : "CLOSED", text);
        return;
    }
    if (!isOpen) {
        out.noPlace("A bound that isn't there can't be closed.");
    }
    out.xml.leaf(tag, "INTERVAL-TYPE", "INFINITE", tag == "LOWER-LIMIT" ? "-INF" : "INF");
}

void writeBounds(ElementOutput const& out, Bounds const& bounds) {
    writeLimit(out, "LOWER-LIMIT", bounds.lower, bounds.isLowerOpen, bounds.lowerText);
    writeLimit(out, "UPPER-LIMIT", bounds.upper, bounds.isUpperOpen, bounds.upperText);
}

/// The line from internal to physical values that the format takes limits through.
std::optional<Line> lineOf(types::PrimitiveType const& type) {
    const types::CompuMethod method = type.getCompuMethod();
    if (!method.isValid() || method.getCategory() == types::CompuMethodCategory::Identical) {
        return Line();
    }
    const types::CompuMethodCategory category = method.getCategory();
    if (category != types::CompuMethodCategory::Linear &&
        category != types::CompuMethodCategory::LinearAndTextTable) {
        return std::nullopt;
    }
    Coefficients held;
    for (const QOB::Real number : method.getCalToInternalCompuNumerators()) {
        held.numerator.push_back(number);
    }
    for (const QOB::Real number : method.getCalToInternalCompuDenominators()) {
        held.denominator.push_back(number);
    }
    Line line;
    if (held.numerator.empty() || !readLine(held, line)) {
        return std::nullopt;
    }
    return line;
}

/// What a reader would make of internal limits for an application type.
std::optional<std::pair<QOB::Real, QOB::Real>> throughMethod(Bounds const& internal,
                                                             types::PrimitiveType const& type) {
    const std::optional<Line> line = lineOf(type);
    if (!line) {
        return std::nullopt;
    }
    const bool isSame = line->bias == 0.0 && line->slope == 1.0;
    const auto turned = [&](QOB::Real limit) {
        return !limit.isValid() || isSame ? limit
                                          : QOB::Real(line->bias + line->slope * double(limit));
    };
    std::pair<QOB::Real, QOB::Real> limits(turned(internal.lower), turned(internal.upper));
    if (line->slope < 0.0) {
        std::swap(limits.first, limits.second);
    }
    return limits;
}

/// The limits that the types of a constraint have, by the two kinds of types.
struct ConstraintLimits {
    std::optional<Bounds> internal;
    std::optional<Bounds> physical;
    bool areInternalDifferent = false;
    bool arePhysicalDifferent = false;
    bool isUnboundedInternal = false; ///< That there are none must be written.
    bool isUnboundedPhysical = false;
    std::vector<types::Real> applicationTypes;
};

/// A truth has limits also if its constraint has none.
bool hasOwnLimits(types::Real const& type, Bounds const& bounds) {
    return types::Boolean(type).isValid() && bounds.lower == QOB::Real(0.0) &&
           bounds.upper == QOB::Real(1.0) && !bounds.isLowerOpen && !bounds.isUpperOpen;
}

ConstraintLimits limitsOf(types::DataConstr const& constraint) {
    ConstraintLimits limits;
    std::vector<types::Real> unlimited; // application types
    for (const types::PrimitiveType type : constraint.getPrimitiveTypes()) {
        const types::Real real(type);
        if (!real.isValid()) {
            continue;
        }
        const bool isApplication = bool(type.isApplication());
        const Bounds own(real);
        if (hasOwnLimits(real, own)) {
            if (isApplication) {
                unlimited.push_back(real);
            }
            continue;
        }
        std::optional<Bounds>& known = isApplication ? limits.physical : limits.internal;
        if (known && *known != own) {
            (isApplication ? limits.arePhysicalDifferent : limits.areInternalDifferent) = true;
        }
        if (types::Boolean(type).isValid() && own.isEmpty()) {
            (isApplication ? limits.isUnboundedPhysical : limits.isUnboundedInternal) = true;
        }
        if (isApplication) {
            limits.applicationTypes.push_back(real);
        }
        known = known ? known : own;
    }
    if (limits.physical && !limits.physical->isEmpty() && !unlimited.empty()) {
        limits.arePhysicalDifferent = true;
        limits.applicationTypes.insert(
            limits.applicationTypes.end(), unlimited.begin(), unlimited.end());
    }
    return limits;
}

/// Application types with different limits under one constraint have them from its internal ones,
/// each by its own method.
bool followFrom(ConstraintLimits const& limits, Bounds const& internal) {
    auto const& all = limits.applicationTypes;
    return std::all_of(all.begin(), all.end(), [&](types::Real const& type) {
        const Bounds own(type);
        const auto read = throughMethod(internal, type);
        return read ? read->first == own.lower && read->second == own.upper
                    : own.isEmpty() || hasOwnLimits(type, own);
    });
}

/// The internal limits that a type's physical ones may come from.
std::optional<Bounds> internalOf(types::Real const& type) {
    const std::optional<Line> line = lineOf(type);
    if (!line) {
        return std::nullopt;
    }
    Bounds bounds(type);
    for (QOB::Real* limit : {&bounds.lower, &bounds.upper}) {
        if (limit->isValid()) {
            *limit = QOB::Real((double(*limit) - line->bias) / line->slope);
        }
    }
    if (line->slope < 0.0) {
        std::swap(bounds.lower, bounds.upper);
        std::swap(bounds.isLowerOpen, bounds.isUpperOpen);
        std::swap(bounds.lowerText, bounds.upperText);
    }
    return bounds;
}

/// Whether the internal limits alone say what all application types have.
bool isInternalEnough(ConstraintLimits& limits) {
    if (limits.internal) {
        return followFrom(limits, *limits.internal);
    }
    for (types::Real const& type : limits.applicationTypes) {
        const std::optional<Bounds> guess = internalOf(type);
        if (guess && !guess->isEmpty() && followFrom(limits, *guess)) {
            limits.internal = guess;
            return true;
        }
    }
    return false;
}

} // namespace

void writeMethod(ElementOutput const& out, types::CompuMethod const& method) {
    out.xml.leaf("CATEGORY", categoryOf(method));
    out.text("DISPLAY-FORMAT", method.getDisplayFormat());
    if (method.hasUnit()) {
        out.reference("UNIT-REF", method.getUnit());
    }
    writeScales(out, method);
}

void writeConstraint(ElementOutput const& out, types::DataConstr const& constraint) {
    ConstraintLimits limits = limitsOf(constraint);
    bool isPhysicalWritten =
        limits.physical && (!limits.physical->isEmpty() || limits.isUnboundedPhysical ||
                            (limits.internal && !limits.internal->isEmpty()));
    if (limits.arePhysicalDifferent) {
        isPhysicalWritten = !isInternalEnough(limits);
        if (isPhysicalWritten) {
            out.remark(Remark::contradiction,
                       "The application types with this constraint have different limits; those "
                       "of the first one are written.");
        }
    }
    if (limits.areInternalDifferent) {
        out.remark(Remark::contradiction,
                   "The implementation types with this constraint have different limits; those "
                   "of the first one are written.");
    }
    const auto when = OpenElement::When::ifUsed;
    const OpenElement rules(out.xml, "DATA-CONSTR-RULES", when);
    const OpenElement rule(out.xml, "DATA-CONSTR-RULE", when);
    {
        const OpenElement physical(out.xml, "PHYS-CONSTRS", when);
        if (isPhysicalWritten) {
            writeBounds(out, *limits.physical);
        }
        if (constraint.hasUnit()) {
            out.reference("UNIT-REF", constraint.getUnit());
        }
    }
    if (limits.internal && (!limits.internal->isEmpty() || limits.isUnboundedInternal)) {
        const OpenElement internal(out.xml, "INTERNAL-CONSTRS");
        writeBounds(out, *limits.internal);
    }
}

} // namespace velum::arxml
