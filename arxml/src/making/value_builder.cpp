#include "making/value_builder.h"

#include "planning/axis_order.h"

#include <string>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

using foundation::ValueSpecification;
using foundation::ValueType;

namespace {

bool isText(Element element) {
    return element.is(element::v) || element.is(element::vf) || element.is(element::vt) ||
           element.is(element::vtf);
}

/// The texts of a content in order; groups are flattened.
void collectTexts(Element list, std::vector<Element>& texts) {
    for (const Element child : list.children()) {
        const bool hasParts = child.children().begin() != child.children().end();
        if (child.is(element::vg) || (child.is(element::vtf) && hasParts)) {
            collectTexts(child, texts);
        } else if (isText(child)) {
            texts.push_back(child);
        }
    }
}

/// The sizes that the groups of a content tell: so many groups of equal length, or else one list.
std::vector<int> sizesOf(Element list, std::size_t texts) {
    int groups = 0;
    int length = -1;
    for (const Element group : list.children()) {
        std::vector<Element> inGroup;
        if (group.is(element::vg)) {
            collectTexts(group, inGroup);
        }
        const auto size = static_cast<int>(inGroup.size());
        if (!group.is(element::vg) || (length >= 0 && size != length)) {
            return {static_cast<int>(texts)};
        }
        length = size;
        ++groups;
    }
    if (groups == 0) {
        return {static_cast<int>(texts)};
    }
    return {groups, length};
}

} // namespace

void ValueBuilder::buildConstants(Catalogue const& catalogue) {
    auto const& constants = catalogue.ofKind(element::constantSpecification);
    for (const Element constant : constants) {
        constants_.add(constant, objects_.makeOf<types::ConstantSpecification>(constant));
    }
    for (const Element constant : constants) {
        owner_ = constant;
        const ValueSpecification value = makeIn(constant.child(element::valueSpec), ValueType());
        if (value.isValid()) {
            constants_.find(constant).setConstantValue(value);
        }
    }
    owner_ = Element();
    circles_.report();
}

ValueSpecification ValueBuilder::makeIn(Element holder, ValueType const& type) {
    for (const Element value : holder.children()) {
        return make(value, type);
    }
    return {};
}

ValueSpecification ValueBuilder::make(Element value, ValueType const& type) {
    switch (value.name()) {
    case element::numericalValueSpecification:
        return makeNumber(value);
    case element::textValueSpecification:
        return makeText(value, type);
    case element::constantReference:
        return makeReference(value);
    case element::arrayValueSpecification:
        return makeArray(value, type);
    case element::recordValueSpecification:
        return makeRecord(value, type);
    case element::applicationValueSpecification:
        return makeApplication(value);
    default:
        context_.account.skip(value, Reason::noClass);
        return {};
    }
}

ValueSpecification ValueBuilder::makeNumber(Element value) {
    const auto literal = makeLabelled<types::LiteralReal>(value);
    const Element written = value.child(element::value);
    const RealNumber number = readRealNumber(written.text());
    if (number.value) {
        literal.setValue(QOB::Real(*number.value));
        context_.account.consume(written);
        if (number.isRounded) {
            context_.note(written,
                          Reason::outOfRange,
                          "The number " + bracketed(written.text()) + " is held rounded.");
        }
    } else if (written) {
        context_.refuseNumber(
            written, *number.fault, "The value " + bracketed(written.text()) + " is no number.");
    }
    return ValueSpecification(literal);
}

ValueSpecification ValueBuilder::makeText(Element value, ValueType const& type) {
    const auto reference = makeLabelled<types::EnumerationLiteralReference>(value);
    const Element text = value.child(element::value);
    reference.setLiteralText(toString(text.text()));
    context_.account.consume(text);
    if (const types::Enumeration enumeration(type); enumeration.isValid()) {
        for (const types::EnumerationLiteral literal : enumeration.getOwnedLiterals()) {
            if (std::string(literal.getName()) == text.text()) {
                reference.setValue(literal);
                break;
            }
        }
    }
    return ValueSpecification(reference);
}

ValueSpecification ValueBuilder::makeReference(Element value) {
    const auto reference = makeLabelled<types::ConstantReference>(value);
    const Element written = value.child(element::constantRef);
    if (const Element target = references_.target(written, {element::constantSpecification})) {
        reference.setValue(constants_.find(target));
        context_.account.consume(written);
        if (owner_) {
            circles_.add(owner_, target, written);
        }
    }
    return ValueSpecification(reference);
}

/// Nested arrays over one matrix of several dimensions become one value, with the row-major
/// position in each cell; a matrix of a matrix keeps its nesting.
ValueSpecification ValueBuilder::makeArray(Element value, ValueType const& type) {
    const auto made = makeLabelled<types::MatrixValueSpecification>(value);
    const types::Matrix matrix(type);
    int depth = 1;
    ValueType elementType;
    if (matrix.isValid()) {
        depth = std::max(1, static_cast<int>(matrix.getDimensionses().size()));
        elementType = matrix.getBaseType();
    }
    int position = 0;
    addCells(made, value, elementType, depth, position);
    return ValueSpecification(made);
}

void ValueBuilder::addCells(types::MatrixValueSpecification const& matrix,
                            Element array,
                            ValueType const& elementType,
                            int depth,
                            int& position) {
    for (const Element part : array.child(element::elements).children()) {
        if (depth > 1 && part.is(element::arrayValueSpecification)) {
            context_.account.consume(part);
            addCells(matrix, part, elementType, depth - 1, position);
            continue;
        }
        const ValueSpecification value = make(part, elementType);
        const auto cell = objects_.make<types::Cell>({});
        matrix.getOwnedCells().push_back(cell);
        cell.getIndexs().push_back(QOB::Integer(position++));
        if (value.isValid()) {
            cell.setValue(value);
        }
    }
}

/// A field belongs to the member of its label, or else to the one at its place.
ValueSpecification ValueBuilder::makeRecord(Element value, ValueType const& type) {
    const auto made = makeLabelled<types::StructureValueSpecification>(value);
    const types::Structure structure(type);
    std::vector<types::StructElement> members;
    if (structure.isValid()) {
        for (const types::StructElement member : structure.getElementses()) {
            members.push_back(member);
        }
    }
    std::size_t place = 0;
    for (const Element field : value.child(element::fields).children()) {
        const std::string_view label = field.child(element::shortLabel).text();
        types::StructElement member =
            place < members.size() ? members[place] : types::StructElement();
        for (types::StructElement const& candidate : members) {
            if (!label.empty() && std::string(candidate.getName()) == label) {
                member = candidate;
            }
        }
        ++place;
        ValueType memberType;
        const auto slot = objects_.make<types::Slot>(label);
        made.getOwnedSlots().push_back(slot);
        if (member.isValid()) {
            slot.setStructElement(member);
            memberType = member.hasInlineType()
                             ? member.getInlineType()
                             : member.getZorvane_metamodel_types_StructElement_Type();
        }
        const ValueSpecification fieldValue = make(field, memberType);
        if (fieldValue.isValid()) {
            slot.setValue(fieldValue);
        }
    }
    return ValueSpecification(made);
}

ValueSpecification ValueBuilder::makeApplication(Element value) {
    const Element axes = value.child(element::swAxisConts);
    const Element category = value.child(element::category);
    context_.account.consume(category);
    const std::string_view kind = category.text();
    const bool isTable = axes || kind == "CURVE" || kind == "MAP" || kind == "CUBOID" ||
                         kind.substr(0, 5) == "CUBE_";
    if (!isTable) {
        const auto content = makeLabelled<types::ApplicationValueSpecification>(value);
        fillContent(content, value.child(element::swValueCont));
        return ValueSpecification(content);
    }
    const auto table = makeLabelled<types::LookupTableSpecification>(value);
    fillContent(types::ApplicationValueSpecification(table), value.child(element::swValueCont));
    for (const Element axis : inAxisOrder(context_, axes, element::swAxisCont)) {
        const auto content = objects_.make<types::LookupTableSpecification>({});
        context_.account.consume(axis);
        fillContent(types::ApplicationValueSpecification(content), axis);
        table.getAxeses().push_back(content);
    }
    return ValueSpecification(table);
}

void ValueBuilder::fillContent(types::ApplicationValueSpecification const& content,
                               Element element) {
    if (!element) {
        return;
    }
    context_.account.consume(element);
    const Element list = element.child(element::swValuesPhys);
    std::vector<Element> texts;
    collectTexts(list, texts);
    const auto held = content.getVs();
    for (const Element text : texts) {
        held.push_back(toString(text.text()));
        context_.account.consume(text);
    }
    const auto dimensions = content.getDimensionses();
    std::vector<Element> sizes;
    collectTexts(element.child(element::swArraysize), sizes);
    for (const Element size : sizes) {
        const WholeNumber number = readCount(size.text());
        if (number.value) {
            dimensions.push_back(QOB::Integer(*number.value));
            context_.account.consume(size);
        } else {
            dimensions.push_back(QOB::Integer()); // keeps the place of the others
            context_.refuse(size,
                            *number.fault,
                            "The size " + bracketed(size.text()) + " is no number of values.");
        }
    }
    if (sizes.empty()) {
        for (const int size : sizesOf(list, texts.size())) {
            dimensions.push_back(QOB::Integer(size));
        }
    }
}

} // namespace velum::arxml
