#include "making/type_importer.h"

#include "making/dimension_reader.h"
#include "making/type_table.h"

#include <string_view>
#include <unordered_set>
#include <velum_arxml/notation/tool_notes.h>
#include <velum_types/types.h>

namespace velum::arxml {

using foundation::ValueType;

namespace {

constexpr std::array typeKinds = {element::implementationDataType,
                                  element::applicationPrimitiveDataType,
                                  element::applicationArrayDataType,
                                  element::applicationRecordDataType};

bool isApplication(Element type) {
    return !type.is(element::implementationDataType) &&
           !type.is(element::implementationDataTypeElement);
}

/// The array that a matrix stands for is of fixed size.
void consumeFixedSize(ImportContext const& context, Element array) {
    const Element semantics = array.child(element::arraySizeSemantics);
    if (semantics.text() == "FIXED-SIZE") {
        context.account.consume(semantics);
    }
}

/// Keeps the name of the type that an object should have.
void noteMissing(QOB::ClassObject const& object, References const& references, Element reference) {
    if (!reference.text().empty()) {
        tool_note::set(object, tool_note::missingType, references.pathFor(reference));
    }
}

/// Why no object is made of a type, where its reason leaves that open.
std::string causeOfOmission(Element type, TypePlan const& plan) {
    if (plan.reason != Reason::noClass) {
        return "What it refers to is missing, or no object is made of it.";
    }
    if (plan.baseType != nullptr) {
        const Element written = plan.baseType->element;
        return "The model has no class for values of the encoding " +
               bracketed(written.child(element::baseTypeEncoding).text()) + " with the size " +
               bracketed(plan.baseType->size.text()) + ".";
    }
    return "The model has no class for the category " +
           bracketed(type.child(element::category).text()) + ".";
}

} // namespace

void TypeImporter::build(Catalogue const& catalogue) {
    tables_.buildLayouts(catalogue);
    for (const NameId kind : typeKinds) {
        for (const Element type : catalogue.ofKind(kind)) {
            TypePlan const& plan = planner_.plan(type);
            if (plan.kind == TypeKind::none) {
                context_.account.skip(type, plan.reason);
                context_.logOf(type).omissions.push_back({ImportContext::spotOf(type),
                                                          type.name(),
                                                          plan.reason,
                                                          causeOfOmission(type, plan)});
            } else {
                made_.add(type, maker_.make(plan, {type, {}}));
            }
        }
    }
    for (const NameId kind : typeKinds) {
        for (const Element type : catalogue.ofKind(kind)) {
            if (const ValueType object = made_.find(type); object.isValid()) {
                fill(object, type, planner_.plan(type));
            }
        }
    }
    for (auto const& [alias, origin] : structureAliases_) {
        copyMembers(alias, origin);
    }
}

void TypeImporter::fill(ValueType const& object, Element type, TypePlan const& plan) {
    (this->*TypeTable::row(plan.kind).fill)(object, type, plan);
    const Element invalid = propertiesOf(type).child(element::invalidValue);
    if (const auto value = values_.makeIn(invalid, object); value.isValid()) {
        object.setInvalidValue(value);
    }
}

void TypeImporter::fillTable(ValueType const& object, Element type, TypePlan const& /*plan*/) {
    tables_.fillTable(types::LookupTableType(object), type);
}

void TypeImporter::fillSharedAxis(ValueType const& object, Element type, TypePlan const& /*plan*/) {
    tables_.fillSharedAxis(types::SharedAxisType(object), type);
}

void TypeImporter::fillPrimitive(ValueType const& object, Element type, TypePlan const& plan) {
    const types::PrimitiveType primitive(object);
    context_.account.consume(type.child(element::category));
    primitives_.setProperties(primitive, plan, propertiesOf(type), isApplication(type));
    setReference(primitive, type, plan);
}

/// To the type it refers to, or to the one it is mapped to.
void TypeImporter::setReference(types::PrimitiveType const& object,
                                Element type,
                                TypePlan const& plan) {
    const types::PrimitiveType target(plan.target ? made_.find(plan.target) : ValueType());
    if (!target.isValid()) {
        return;
    }
    object.setReference(target);
    if (TypeMaps::Map const* const map = isApplication(type) ? maps_.find(type) : nullptr) {
        maps_.consume(*map);
    } else {
        context_.account.consume(propertiesOf(type).child(element::implementationDataTypeRef));
    }
}

/// The object of the type that a reference leads to; empty if there is none.
ValueType TypeImporter::typeAt(Element reference) {
    const Element target = references_.target(reference,
                                              {element::implementationDataType,
                                               element::applicationPrimitiveDataType,
                                               element::applicationArrayDataType,
                                               element::applicationRecordDataType});
    if (!target) {
        return {};
    }
    ValueType object = made_.find(target);
    if (object.isValid()) {
        context_.account.consume(reference);
    } else {
        references_.reportNoObject(reference, target);
    }
    return object;
}

void TypeImporter::fillMatrix(ValueType const& object, Element type, TypePlan const& plan) {
    const types::Matrix matrix(object);
    matrix.setIsApplication(QOB::Boolean(isApplication(type)));
    context_.account.consume(type.child(element::category));
    if (type.is(element::applicationArrayDataType)) {
        fillApplicationArray(matrix, type);
    } else if (type.is(element::applicationPrimitiveDataType)) {
        fillValueBlock(matrix, type);
    } else {
        // The model has no reference from matrix to matrix: another name is another one like it.
        fillArray(matrix, plan.origin ? plan.origin : type);
    }
}

void TypeImporter::fillArray(types::Matrix const& matrix, Element type) {
    const Element innermost = addDimensions(matrix, type);
    if (!innermost) {
        return;
    }
    context_.account.consume(innermost.child(element::category));
    if (formOf(innermost) == TypeForm::reference) {
        const ValueType base =
            typeAt(propertiesOf(innermost).child(element::implementationDataTypeRef));
        if (base.isValid()) {
            matrix.setBaseType(base);
        } else {
            noteMissing(matrix,
                        references_,
                        propertiesOf(innermost).child(element::implementationDataTypeRef));
        }
        return;
    }
    TypePlan const& plan = planner_.plan(innermost);
    if (plan.kind == TypeKind::none) {
        context_.account.skip(innermost, plan.reason);
        return;
    }
    // A member that is an array itself shares its path with the member object.
    const Identity identity = innermost == type
                                  ? Identity{{}, type.child(element::shortName).text()}
                                  : Identity{innermost, {}};
    const ValueType known = made_.find(innermost); // another name for the same matrix came before
    const ValueType base = known.isValid() ? known : maker_.make(plan, identity);
    if (!known.isValid()) {
        made_.add(innermost, base);
        fill(base, innermost, plan);
    }
    matrix.setBaseType(base);
}

/// Arrays of anonymous arrays are one matrix; returns the element that is no array any more.
Element TypeImporter::addDimensions(types::Matrix const& matrix, Element type) {
    Element array = type;
    for (;;) {
        if (const Element size = array.child(element::arraySize)) {
            addDimension(context_, matrix, size);
            consumeFixedSize(context_, array);
        }
        if (formOf(array) != TypeForm::array) {
            return array;
        }
        context_.account.consume(array.child(element::category));
        array = array.child(element::subElements).child(element::implementationDataTypeElement);
        if (!array) {
            return {};
        }
    }
}

void TypeImporter::fillApplicationArray(types::Matrix const& matrix, Element type) {
    const Element part = type.child(element::element);
    if (const Element size = part.child(element::maxNumberOfElements)) {
        addDimension(context_, matrix, size);
        consumeFixedSize(context_, part);
    }
    const Element reference = part.child(element::typeTref);
    if (const ValueType base = typeAt(reference); base.isValid()) {
        matrix.setBaseType(base);
    } else {
        noteMissing(matrix, references_, reference);
    }
}

void TypeImporter::fillValueBlock(types::Matrix const& matrix, Element type) {
    const Element properties = propertiesOf(type);
    const Element sizes = properties.child(element::swValueBlockSizeMults);
    for (const Element size : sizes.children()) {
        addDimension(context_, matrix, size);
    }
    if (const Element size = properties.child(element::swValueBlockSize); size && !sizes) {
        addDimension(context_, matrix, size);
    }
    matrix.setBaseType(
        ValueType(primitives_.makePart(planner_.planOfPart(properties), properties)));
}

void TypeImporter::fillStructure(ValueType const& object, Element type, TypePlan const& plan) {
    const types::Structure structure(object);
    structure.setIsApplication(QOB::Boolean(isApplication(type)));
    context_.account.consume(type.child(element::category));
    addMembers(structure, type);
    if (plan.origin) {
        structureAliases_.emplace_back(structure, made_.find(plan.origin));
    }
}

void TypeImporter::addMembers(types::Structure const& structure, Element type) {
    const bool isRecord = type.is(element::applicationRecordDataType);
    std::unordered_set<std::string_view> names;
    for (const Element member :
         type.child(isRecord ? element::elements : element::subElements).children()) {
        if (!member.is(isRecord ? element::applicationRecordElement
                                : element::implementationDataTypeElement)) {
            continue;
        }
        if (!names.insert(member.child(element::shortName).text()).second) {
            context_.find(member,
                          Reason::duplicatePath,
                          "An element of this name stands before in the structure; both are held.");
        }
        addMember(structure, member);
    }
}

/// The model has no reference from structure to structure: another name is another one like it,
/// whose members have the types of the first one's members. So that a small file can't ask for a
/// huge model, no more members are copied than the files have elements.
void TypeImporter::copyMembers(types::Structure const& alias, types::Structure const& origin) {
    const auto members = origin.getElementses();
    copied_ += static_cast<std::size_t>(members.size());
    if (copied_ > context_.documents.store.size()) {
        return;
    }
    for (const types::StructElement member : members) {
        const auto copy = objects_.make<types::StructElement>(std::string(member.getName()));
        copy.setStructure(alias);
        if (member.hasInlineType()) {
            copy.setType(member.getInlineType());
        } else if (member.hasType()) {
            copy.setType(member.getType());
        }
    }
}

void TypeImporter::addMember(types::Structure const& structure, Element member) {
    const auto object = objects_.makeOf<types::StructElement>(member);
    object.setStructure(structure);
    if (member.is(element::applicationRecordElement)) {
        const Element reference = member.child(element::typeTref);
        if (const ValueType type = typeAt(reference); type.isValid()) {
            object.setType(type);
        } else {
            noteMissing(object, references_, reference);
        }
        return;
    }
    setMemberType(object, member);
}

void TypeImporter::setMemberType(types::StructElement const& object, Element member) {
    if (formOf(member) == TypeForm::reference && !member.child(element::arraySize)) {
        const Element reference = propertiesOf(member).child(element::implementationDataTypeRef);
        context_.account.consume(member.child(element::category));
        if (!reference) {
            context_.find(
                member, Reason::dangling, "The element refers to no IMPLEMENTATION-DATA-TYPE.");
        }
        if (const ValueType type = typeAt(reference); type.isValid()) {
            object.setType(type);
        } else {
            noteMissing(object, references_, reference);
        }
        return;
    }
    if (const ValueType type = makeInline(member); type.isValid()) {
        object.setInlineType(type);
    }
}

/// The type that an element has all for itself, with the element's name.
ValueType TypeImporter::makeInline(Element member) {
    const Identity identity{{}, member.child(element::shortName).text()};
    if (member.child(element::arraySize) || formOf(member) == TypeForm::array) {
        const auto matrix = identity.make<types::Matrix>(objects_);
        matrix.setIsApplication(QOB::Boolean(false));
        fillArray(matrix, member);
        return ValueType(matrix);
    }
    TypePlan const& plan = planner_.plan(member);
    if (plan.kind == TypeKind::none) {
        context_.account.skip(member.child(element::subElements), plan.reason);
        context_.account.skip(member.child(element::swDataDefProps), plan.reason);
        context_.account.skip(member.child(element::category), plan.reason);
        return {};
    }
    ValueType type = maker_.make(plan, identity);
    fill(type, member, plan);
    return type;
}

void TypeImporter::fillPointer(ValueType const& object, Element type, TypePlan const& plan) {
    const types::VoidPointer pointer(object);
    context_.account.consume(type.child(element::category));
    // The model has no reference from pointer to pointer either.
    const Element properties = propertiesOf(plan.origin ? plan.origin : type);
    if (const Element policy = properties.child(element::swImplPolicy)) {
        pointer.setSwImplPolicy(toString(policy.text()));
        context_.account.consume(policy);
    }
    const Element target = properties.child(element::swPointerTargetProps);
    const auto base = primitives_.baseType(propertiesOf(target).child(element::baseTypeRef));
    if (base.isValid()) {
        pointer.setSwBaseType(base);
    }
}

} // namespace velum::arxml
