#include "making/table_builder.h"

#include "planning/axis_order.h"

#include <algorithm>
#include <array>
#include <optional>
#include <velum_arxml/notation/number.h>
#include <velum_arxml/notation/tool_notes.h>
#include <velum_types/types.h>

namespace velum::arxml {

namespace {

/// Whether a shared axis has an axis that isn't that of another one, or of itself.
bool hasOwnAxis(Element sharedAxis) {
    const auto axes = propertiesOf(sharedAxis).child(element::swCalprmAxisSet).children();
    bool hasAxis = false;
    for (const Element axis : axes) {
        if (axis.child(element::swAxisGrouped)) {
            return false;
        }
        hasAxis = hasAxis || axis.is(element::swCalprmAxis);
    }
    return hasAxis;
}

} // namespace

void TableBuilder::buildLayouts(Catalogue const& catalogue) {
    for (const Element layout : catalogue.ofKind(element::swRecordLayout)) {
        layouts_.add(layout, objects_.makeOf<types::SwRecordLayout>(layout));
    }
}

/// What tables and shared axes have in common.
template <class Handle>
void TableBuilder::setCommon(Handle const& object, Element properties) {
    const Element layoutRef = properties.child(element::swRecordLayoutRef);
    if (const Element target = references_.target(layoutRef, {element::swRecordLayout})) {
        object.setSwRecordLayout(layouts_.find(target));
        context_.account.consume(layoutRef);
    }
    const auto values = primitiveAt(properties.child(element::valueAxisDataTypeRef));
    if (values.isValid()) {
        object.setValueAxisDataType(values);
    }
}

void TableBuilder::fillTable(types::LookupTableType const& table, Element type) {
    const Element properties = propertiesOf(type);
    setCommon(table, properties);
    if (const auto part = makePart(properties); part.isValid()) {
        table.setBaseType(part);
    }
    const Element set = properties.child(element::swCalprmAxisSet);
    for (const Element axis : inAxisOrder(context_, set, element::swCalprmAxis)) {
        table.getAxeses().push_back(makeAxis(axis));
    }
    compareCategory(table, type.child(element::category));
}

/// The model derives the category from the number of axes.
void TableBuilder::compareCategory(types::LookupTableType const& table, Element category) const {
    const std::string derived = table.getCategory();
    if (derived == category.text()) {
        context_.account.consume(category);
        return;
    }
    context_.refuse(category,
                    Reason::wrongTarget,
                    "By its axes the table is a " + derived + ", not a " +
                        std::string(category.text()) + ".");
}

void TableBuilder::fillSharedAxis(types::SharedAxisType const& shared, Element type) {
    const Element properties = propertiesOf(type);
    setCommon(shared, properties);
    if (type.child(element::category).text() == "COM_AXIS") {
        context_.account.consume(type.child(element::category));
    }
    const Element set = properties.child(element::swCalprmAxisSet);
    const auto axes = inAxisOrder(context_, set, element::swCalprmAxis);
    if (!axes.empty()) {
        shared.setAxis(makeAxis(axes.front()));
    }
}

types::PrimitiveType TableBuilder::makePart(Element properties) {
    constexpr std::array references = {
        element::compuMethodRef, element::unitRef, element::dataConstrRef, element::baseTypeRef};
    const auto* const written = std::find_if(
        references.begin(), references.end(), [&](NameId name) { return properties.child(name); });
    if (written == references.end()) {
        return {};
    }
    types::PrimitiveType part = primitives_.makePart(planner_.planOfPart(properties), properties);
    if (!part.hasCompuMethod() && !part.hasUnit() && !part.hasDataConstr() &&
        !part.hasSwBaseType()) { // nothing else would tell that the file has a part
        tool_note::set(
            part, tool_note::missingReference, references_.pathFor(properties.child(*written)));
    }
    return part;
}

types::Axis TableBuilder::makeAxis(Element element) {
    auto axis = objects_.make<types::Axis>({});
    context_.account.consume(element);
    const Element category = element.child(element::category);
    const std::string_view kind = category.text();
    if (kind == "STD_AXIS" || kind == "STD-AXIS" || kind == "COM_AXIS" || kind == "COM-AXIS") {
        context_.account.consume(category);
    }
    if (const Element individual = element.child(element::swAxisIndividual)) {
        fillIndividual(axis, individual);
    }
    if (const Element grouped = element.child(element::swAxisGrouped)) {
        fillGrouped(axis, grouped);
    }
    return axis;
}

void TableBuilder::fillIndividual(types::Axis const& axis, Element individual) {
    setPoints(axis, individual);
    const auto input = primitiveAt(individual.child(element::inputVariableTypeRef));
    if (input.isValid()) {
        axis.setInputVariableType(input);
    }
    if (const auto part = makePart(individual); part.isValid()) {
        axis.setBaseType(part);
    }
}

void TableBuilder::setPoints(types::Axis const& axis, Element individual) {
    const Element most = individual.child(element::swMaxAxisPoints);
    const Element least = individual.child(element::swMinAxisPoints);
    if (!most) {
        return;
    }
    const WholeNumber points = readCount(most.text());
    if (points.fault) {
        const bool isNumber = *points.fault == Reason::outOfRange;
        context_.refuseNumber(
            most,
            *points.fault,
            "The number of points " + bracketed(most.text()) +
                (isNumber ? " is none that an axis can have." : " is no whole number."));
        return;
    }
    axis.setDimensions(QOB::Integer(*points.value));
    context_.account.consume(most);
    if (readWholeNumber(least.text()).value == points.value) {
        context_.account.consume(least);
    }
}

/// A table asks its shared axes for their sizes, so only a whole one may be set.
void TableBuilder::fillGrouped(types::Axis const& axis, Element grouped) {
    const Element reference = grouped.child(element::sharedAxisTypeRef);
    const Element target = references_.target(reference, {element::applicationPrimitiveDataType});
    if (!target) {
        return;
    }
    const foundation::ValueType object = made_.find(target);
    if (!object.isValid()) {
        references_.reportNoObject(reference, target);
        return;
    }
    const types::SharedAxisType shared(object);
    if (!shared.isValid()) {
        context_.refuse(reference,
                        Reason::wrongTarget,
                        "The target " + bracketed(context_.path(target)) + " is no axis.");
        return;
    }
    if (!hasOwnAxis(target)) {
        context_.refuse(reference,
                        Reason::dangling,
                        "The shared axis " + bracketed(context_.path(target)) +
                            " has no axis of its own.");
        return;
    }
    axis.setSharedAxis(shared);
    context_.account.consume(reference);
}

types::PrimitiveType TableBuilder::primitiveAt(Element reference) {
    const Element target = references_.target(
        reference, {element::applicationPrimitiveDataType, element::implementationDataType});
    if (!target) {
        return {};
    }
    const foundation::ValueType object = made_.find(target);
    if (!object.isValid()) {
        references_.reportNoObject(reference, target);
        return {};
    }
    types::PrimitiveType primitive(object);
    if (!primitive.isValid()) {
        context_.refuse(reference,
                        Reason::wrongTarget,
                        "The target " + bracketed(context_.path(target)) +
                            " is no primitive type.");
        return {};
    }
    context_.account.consume(reference);
    return primitive;
}

} // namespace velum::arxml
