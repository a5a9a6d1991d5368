#include "check/type_rules.h"

#include "check/storage.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <velum_arxml/notation/number.h>
#include <velum_arxml/notation/tool_notes.h>
#include <velum_types/types.h>

namespace velum::check {

namespace types = Zorvane::metamodel::types;
using arxml::numberText;
using arxml::SourceElement;

namespace {

bool isTrue(QOB::Boolean const& flag) {
    return flag == QOB::Boolean(true);
}

std::string nameOf(types::EnumerationLiteral const& literal) {
    return literal.hasName() ? std::string(literal.getName()) : std::string();
}

void checkRange(types::Real const& type, Sink const& sink) {
    if (!type.hasMinValue() || !type.hasMaxValue()) {
        return;
    }
    const double min = type.getMinValue();
    const double max = type.getMaxValue();
    if (min > max) {
        sink.add("empty-range",
                 "The minimum " + numberText(min) + " is above the maximum " + numberText(max) +
                     ".");
    } else if (min == max && (isTrue(type.isMinOpen()) || isTrue(type.isMaxOpen()))) {
        sink.add("empty-range", "The range from " + numberText(min) + " to itself excludes it.");
    }
}

/// Whether the limits of a type are those of its internal values.
bool hasInternalLimits(types::PrimitiveType const& type) {
    if (!isTrue(type.isApplication()) || !type.hasCompuMethod()) {
        return true;
    }
    using Category = types::CompuMethodCategory;
    return type.getCompuMethod().getCategory() == Category(Category::Identical);
}

/// What the type can hold, in the numbers that its limits are given in.
std::optional<Interval> holdableRange(types::Real const& type) {
    if (const types::FloatingPoint floating(type); floating.isValid()) {
        const bool isSingle =
            floating.getKind() == types::FloatingPointKind(types::FloatingPointKind::IEEE_Single);
        constexpr double most = std::numeric_limits<float>::max();
        return isSingle ? std::optional<Interval>({-most, most}) : std::nullopt;
    }
    const std::optional<Interval> storage = storageOf(type);
    const types::FixedPoint fixed(type);
    if (!storage || !fixed.isValid()) {
        return storage && hasInternalLimits(types::PrimitiveType(type)) ? storage : std::nullopt;
    }
    const double slope = fixed.getSlope();
    const double bias = fixed.getBias();
    const double first = bias + slope * storage->lowest;
    const double last = bias + slope * storage->highest;
    return Interval{std::min(first, last), std::max(first, last)};
}

/// A limit between two steps of a fixed point type stands for the nearest one.
double toleranceOf(types::Real const& type) {
    const types::FixedPoint fixed(type);
    return fixed.isValid() ? std::abs(double(fixed.getSlope())) / 2.0 : 0.0;
}

void checkLimits(types::Real const& type, Sink const& sink) {
    const std::optional<Interval> range = holdableRange(type);
    if (!range) {
        return;
    }
    const double tolerance = toleranceOf(type);
    const bool isBelow =
        type.hasMinValue() && double(type.getMinValue()) < range->lowest - tolerance;
    const bool isAbove =
        type.hasMaxValue() && double(type.getMaxValue()) > range->highest + tolerance;
    if (!isBelow && !isAbove) {
        return;
    }
    const auto text = [&type](bool isThere, double value, char const* note) {
        return isThere ? arxml::tool_note::get(type, note).value_or(numberText(value))
                       : std::string("unlimited");
    };
    sink.add("limits-beyond-type",
             "The limits " +
                 text(type.hasMinValue(), type.getMinValue(), arxml::tool_note::minValue) + " to " +
                 text(type.hasMaxValue(), type.getMaxValue(), arxml::tool_note::maxValue) +
                 " exceed what the type can hold, " + numberText(range->lowest) + " to " +
                 numberText(range->highest) + ".");
}

void checkLiterals(types::Enumeration const& type, Sink const& sink) {
    const std::optional<Interval> storage = storageOf(types::Real(type));
    std::map<int, std::string> first;
    for (const types::EnumerationLiteral literal : type.getOwnedLiterals()) {
        const QOB::Integer held = literal.getValue();
        if (!held.isValid()) {
            continue;
        }
        const int value = held;
        const std::string name = nameOf(literal);
        if (storage && (value < storage->lowest || value > storage->highest)) {
            sink.add("literal-beyond-type",
                     "The literal " + name + " has the value " + std::to_string(value) +
                         "; the type holds " + numberText(storage->lowest) + " to " +
                         numberText(storage->highest) + ".");
        }
        const auto [entry, isNew] = first.emplace(value, name);
        if (!isNew) {
            sink.add("shared-value",
                     "The literals " + entry->second + " and " + name + " share the value " +
                         std::to_string(value) + ".");
        }
    }
}

/// The exponents of a dimension by the name of the base dimension.
std::map<std::string, int> exponentsOf(types::Dimension const& dimension) {
    std::map<std::string, int> exponents;
    auto exponent = dimension.getBaseExponents().begin();
    for (const types::Dimension base : dimension.getBaseDimensions()) {
        const QOB::Integer held = *exponent;
        ++exponent;
        exponents.emplace(base.hasName() ? std::string(base.getName()) : std::string(),
                          held.isValid() ? static_cast<int>(held) : 0);
    }
    return exponents;
}

std::string textOf(types::Unit const& unit) {
    const std::string name = unit.hasName() ? std::string(unit.getName()) : std::string();
    const types::Dimension dimension = unit.getDimension();
    return name + (dimension.hasName() ? " (" + std::string(dimension.getName()) + ")" : "");
}

/// Units whose dimension the files don't tell are taken as right.
void checkUnits(types::PrimitiveType const& type, Sink const& sink) {
    if (!type.hasUnit() || !type.hasCompuMethod() || !type.getCompuMethod().hasUnit()) {
        return;
    }
    const types::Unit own = type.getUnit();
    const types::Unit ofMethod = type.getCompuMethod().getUnit();
    if (own == ofMethod || !own.hasDimension() || !ofMethod.hasDimension() ||
        own.getDimension() == ofMethod.getDimension() ||
        exponentsOf(own.getDimension()) == exponentsOf(ofMethod.getDimension())) {
        return;
    }
    sink.add("unit-mismatch",
             "The unit of the type is " + textOf(own) + ", that of its method " + textOf(ofMethod) +
                 ".");
}

/// Whether a file gives the method coefficients, held or not.
bool hasCoefficients(SourceElement method) {
    for (const std::string_view direction : {"COMPU-INTERNAL-TO-PHYS", "COMPU-PHYS-TO-INTERNAL"}) {
        for (const SourceElement scale : method.child(direction).child("COMPU-SCALES").children()) {
            if (scale.child("COMPU-RATIONAL-COEFFS")) {
                return true;
            }
        }
    }
    return false;
}

/// Whether the one function of the method that the file gives has the same result everywhere.
bool isFlat(SourceElement method) {
    SourceElement only;
    for (const std::string_view direction : {"COMPU-INTERNAL-TO-PHYS", "COMPU-PHYS-TO-INTERNAL"}) {
        for (const SourceElement scale : method.child(direction).child("COMPU-SCALES").children()) {
            if (const SourceElement coefficients = scale.child("COMPU-RATIONAL-COEFFS")) {
                if (only) {
                    return false;
                }
                only = coefficients;
            }
        }
    }
    if (!only) {
        return false;
    }
    int count = 0;
    for (const SourceElement v : only.child("COMPU-NUMERATOR").children()) {
        const arxml::RealNumber number = arxml::readRealNumber(v.text());
        if (!number.value || (count > 0 && *number.value != 0.0)) {
            return false;
        }
        ++count;
    }
    return count > 0;
}

} // namespace

void checkType(types::Real const& type, Sink const& sink) {
    checkRange(type, sink);
    checkLimits(type, sink);
    checkUnits(types::PrimitiveType(type), sink);
    if (const types::Enumeration enumeration(type); enumeration.isValid()) {
        checkLiterals(enumeration, sink);
    } else if (const types::FixedPoint fixed(type); fixed.isValid()) {
        if (double(fixed.getSlope()) == 0.0) {
            sink.add("zero-factor", "The slope of the fixed point type is 0.");
        }
    }
}

void checkUnit(types::Unit const& unit, SourceElement element, Sink const& sink) {
    const SourceElement written = element.child("FACTOR-SI-TO-UNIT");
    const bool isZeroInFile =
        written && arxml::readRealNumber(written.text()).value == std::optional(0.0);
    if (isZeroInFile || double(unit.getConvFactor()) == 0.0) {
        sink.add("zero-factor", "The conversion factor of the unit is 0.");
    }
}

void checkMethod(types::CompuMethod const& method, SourceElement element, Sink const& sink) {
    using Category = types::CompuMethodCategory;
    const Category category = method.getCategory();
    const bool isLine = category == Category(Category::Linear) ||
                        category == Category(Category::LinearAndTextTable);
    if (!isLine && category != Category(Category::RatFunc)) {
        return;
    }
    const bool isEmpty = method.getCalToInternalCompuNumerators().empty() ||
                         method.getCalToInternalCompuDenominators().empty();
    if (isEmpty && !hasCoefficients(element)) {
        sink.add("no-coefficients",
                 "A method of category " + std::string(category.toString()) +
                     " has no coefficients.");
    }
    if (isLine && isFlat(element)) {
        sink.add("zero-factor",
                 "The slope of the method is 0: every value is converted to the same one.");
    }
}

} // namespace velum::check
