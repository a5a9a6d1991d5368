#include "making/unit_importer.h"

#include "planning/display_name.h"

#include <cmath>
#include <limits>
#include <velum_arxml/notation/number.h>
#include <velum_arxml/notation/tool_notes.h>

namespace velum::arxml {

namespace {

struct BaseDimension {
    NameId exponent;
    char const* name;
    char const* symbol;
};

/// The dimensions of the international system, in the order of the schema.
constexpr std::array<BaseDimension, 7> baseDimensionTable = {{
    {element::lengthExp, "Length", "L"},
    {element::massExp, "Mass", "M"},
    {element::timeExp, "Time", "T"},
    {element::currentExp, "Current", "I"},
    {element::temperatureExp, "Temperature", "Theta"},
    {element::molarAmountExp, "MolarAmount", "N"},
    {element::luminousIntensityExp, "LuminousIntensity", "J"},
}};

} // namespace

void UnitImporter::build(Catalogue const& catalogue) {
    for (const Element dimension : catalogue.ofKind(element::physicalDimension)) {
        buildDimension(dimension);
    }
    for (const Element unit : catalogue.ofKind(element::unit)) {
        buildUnit(unit);
    }
    relateUnits();
}

void UnitImporter::buildDimension(Element element) {
    const auto dimension = objects_.makeOf<types::Dimension>(element);
    dimensions_.add(element, dimension);
    dimensionElements_.push_back(element);
    setExponents(dimension, element);
}

/// All exponents or none: a part of them would be another dimension.
void UnitImporter::setExponents(types::Dimension const& dimension, Element element) {
    std::array<std::int32_t, baseDimensionTable.size()> exponents{};
    std::optional<Reason> fault;
    for (std::size_t i = 0; i < exponents.size(); ++i) {
        const Element exponent = element.child(baseDimensionTable[i].exponent);
        if (!exponent) {
            continue;
        }
        const RealNumber number = readRealNumber(exponent.text());
        const double value = number.value.value_or(0.0);
        const bool isWhole = std::trunc(value) == value &&
                             std::abs(value) <= std::numeric_limits<std::int32_t>::max();
        if (number.fault || !isWhole) {
            fault = number.fault.value_or(Reason::outOfRange);
            context_.find(exponent,
                          *fault,
                          "The exponent " + bracketed(exponent.text()) +
                              " is no whole number; no exponent of the dimension is held.");
        } else {
            exponents[i] = static_cast<std::int32_t>(value);
        }
    }
    for (std::size_t i = 0; i < exponents.size(); ++i) {
        const Element exponent = element.child(baseDimensionTable[i].exponent);
        if (fault) {
            context_.account.skip(exponent, *fault);
            continue;
        }
        context_.account.consume(exponent);
        if (exponents[i] != 0) {
            dimension.getBaseDimensions().push_back(baseDimension(i));
            dimension.getBaseExponents().push_back(QOB::Integer(exponents[i]));
        }
    }
}

/// Made at the first need.
types::Dimension UnitImporter::baseDimension(std::size_t number) {
    types::Dimension& dimension = baseDimensions_[number];
    if (!dimension.isValid()) {
        dimension = objects_.make<types::Dimension>(baseDimensionTable[number].name);
        dimension.setSymbol(toString(baseDimensionTable[number].symbol));
    }
    return dimension;
}

void UnitImporter::buildUnit(Element element) {
    const auto unit = objects_.makeOf<types::Unit>(element);
    units_.add(element, unit);
    if (const Element display = element.child(element::displayName)) {
        unit.setSymbol(toString(display.text()));
        context_.account.consume(display);
        if (const std::string name = displayNameOf(display); name != display.text()) {
            tool_note::set(unit, tool_note::displayName, name);
        }
        for (const Element part : display.children()) {
            const bool isSuperscript = part.is(element::sup);
            if (!isSuperscript && !part.is(element::sub)) {
                continue;
            }
            const auto parts = isSuperscript ? unit.getSuperscripts() : unit.getSubscripts();
            const auto before = parts.size();
            parts.push_back(toString(part.text()));
            if (parts.size() == before) {
                context_.refuse(part,
                                Reason::duplicateValue,
                                "The text " + bracketed(part.text()) + " is there already.");
            } else {
                context_.account.consume(part);
            }
        }
    }
    const bool isSi = setConversion(unit, element);
    const Element reference = element.child(element::physicalDimensionRef);
    if (const Element target = references_.target(reference, {element::physicalDimension})) {
        unit.setDimension(dimensions_.find(target));
        context_.account.consume(reference);
        members_[target.index()].push_back({unit, isSi});
    }
}

/// The file converts from the SI unit, the model to it; true if the two are the same.
bool UnitImporter::setConversion(types::Unit const& unit, Element element) {
    const Element factorElement = element.child(element::factorSiToUnit);
    const Element offsetElement = element.child(element::offsetSiToUnit);
    const std::optional<double> factor = readConversion(factorElement, 1.0);
    const std::optional<double> offset = readConversion(offsetElement, 0.0);
    const bool isZero = factor == 0.0;
    const double divisor = isZero ? 1.0 : factor.value_or(1.0);
    const double convFactor = 1.0 / divisor;
    const double convOffset = offset.value_or(0.0) == 0.0 ? 0.0 : -*offset / divisor;
    if (isZero || !std::isfinite(convFactor) || !std::isfinite(convOffset)) {
        const Reason fault = isZero ? Reason::badNumber : Reason::outOfRange;
        context_.refuse(factorElement,
                        fault,
                        std::string(isZero ? "The factor is 0" : "The factor is too small") +
                            "; it is taken as 1 and the offset as 0.");
        context_.account.skip(offsetElement, fault);
        return false;
    }
    unit.setConvFactor(QOB::Real(convFactor));
    unit.setConvOffset(QOB::Real(convOffset));
    if (factor) {
        context_.account.consume(factorElement);
    }
    if (offset) {
        context_.account.consume(offsetElement);
    }
    return factor == 1.0 && offset == 0.0;
}

/// Nothing if it is there and no number.
std::optional<double> UnitImporter::readConversion(Element number, double missing) {
    if (!number) {
        return missing;
    }
    const RealNumber read = readRealNumber(number.text());
    if (read.value && std::isfinite(*read.value)) {
        return read.value;
    }
    context_.refuse(number,
                    read.fault.value_or(Reason::badNumber),
                    "The text " + bracketed(number.text()) + " is no number; it is taken as " +
                        numberText(missing) + ".");
    return std::nullopt;
}

/// The one SI unit of a dimension is its base unit, and what its other units convert to.
void UnitImporter::relateUnits() {
    for (const Element element : dimensionElements_) {
        const auto found = members_.find(element.index());
        if (found == members_.end()) {
            continue;
        }
        Member const* si = nullptr;
        bool isOnlyOne = true;
        for (Member const& member : found->second) {
            isOnlyOne = isOnlyOne && (!member.isSi || si == nullptr);
            si = member.isSi ? &member : si;
        }
        if (si == nullptr || !isOnlyOne) {
            continue;
        }
        dimensions_.find(element).setBaseUnit(si->unit);
        for (Member const& member : found->second) {
            if (!member.isSi) {
                member.unit.setConvUnit(si->unit);
            }
        }
    }
}

} // namespace velum::arxml
