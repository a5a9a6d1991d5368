#include "dictionary/implementation_type_importer.h"

#include "dictionary/dictionary.h"
#include "dictionary/findings.h"

#include <utility>

namespace velum::dictionary {

namespace element = arxml::element;
using arxml::Fragment;
using report::Reason;

void ImplementationTypeImporter::take(const Fragment& fragment) {
    report::FileReport& report = context_.fileReport(fragment.file());
    arxml::FragmentAccount account(fragment);
    if (const auto refusal = reasonAgainst(fragment, context_, byPath_)) {
        account.skipAll(report.tally, *refusal);
        return;
    }
    const Fragment::Index props = fragment.child(0, element::swDataDefProps);
    const Fragment::Index variants = fragment.child(props, element::swDataDefPropsVariants);
    const Fragment::Index properties = fragment.child(variants, element::swDataDefPropsConditional);
    const Fragment::Index baseTypeRef = fragment.child(properties, element::baseTypeRef);
    const Fragment::Index typeRef = fragment.child(properties, element::implementationDataTypeRef);
    const std::optional<bool> isReference = readCategory(fragment, baseTypeRef, typeRef);
    byPath_.emplace(fragment.path(0), isReference ? types_.size() : notHeld);
    if (!isReference) {
        account.skipAll(report.tally, Reason::noClass);
        return;
    }

    const Fragment::Index reference = *isReference ? typeRef : baseTypeRef;
    for (const Fragment::Index held : {Fragment::Index{0},
                                       fragment.child(0, element::shortName),
                                       fragment.child(0, element::category),
                                       props,
                                       variants,
                                       properties,
                                       reference}) {
        account.hold(held);
    }
    Type type;
    type.path = fragment.path(0);
    type.file = fragment.file();
    type.place = placeOf(fragment, 0);
    type.isReference = *isReference;
    if (reference != Fragment::none) {
        type.reference = arxml::referenceAt(fragment, reference);
        type.referencePlace = placeOf(fragment, reference);
    }
    type.elements = account.defer();
    types_.push_back(std::move(type));
}

/// Whether the type refers to another one (or to a base type); none for the other categories.
std::optional<bool> ImplementationTypeImporter::readCategory(const Fragment& fragment,
                                                             Fragment::Index baseTypeRef,
                                                             Fragment::Index typeRef) const {
    const Fragment::Index category = fragment.child(0, element::category);
    if (category != Fragment::none && !fragment.text(category).empty()) {
        if (fragment.text(category) == "VALUE") {
            return false;
        }
        if (fragment.text(category) == "TYPE_REFERENCE") {
            return true;
        }
        return std::nullopt;
    }
    const bool hasParts = fragment.child(0, element::subElements) != Fragment::none;
    if (hasParts || (baseTypeRef == Fragment::none && typeRef == Fragment::none)) {
        return std::nullopt;
    }
    const bool isReference = baseTypeRef == Fragment::none;
    context_.fileReport(fragment.file())
        .find(placeOf(fragment, 0),
              Reason::inferred,
              std::string("The type has no category; it is taken as ") +
                  (isReference ? "TYPE_REFERENCE." : "VALUE."));
    return isReference;
}

void ImplementationTypeImporter::build(Dictionary& dictionary) {
    for (Index i = 0; i < types_.size(); ++i) {
        decide(i);
    }
    for (const Type& type : types_) {
        report::Tally& tally = context_.fileReport(type.file).tally;
        const bool isInteger =
            type.baseType != nullptr && type.baseType->encoding.values == Encoding::Values::integer;
        if (isInteger) {
            dictionary.addInteger(context_.index.paths().name(type.path),
                                  type.baseType->encoding.isSigned,
                                  type.baseType->bits);
            type.baseType->isUsed = true;
            type.elements.settle(tally, Reason::noProperty);
        } else {
            type.elements.skipAll(tally, type.reason);
        }
    }
}

/// Follows the type references from one type to a base type, for all types on the way.
void ImplementationTypeImporter::decide(Index first) {
    std::vector<Type*> way;
    Type* end = &types_[first];
    while (end != nullptr && end->state == Type::State::open) {
        end->state = Type::State::onTheWay;
        way.push_back(end);
        end = step(*end);
    }
    if (end != nullptr && end->state == Type::State::onTheWay) {
        fail(*way.back(), Reason::dangling, "The type references lead back to this type.");
        end = nullptr;
    }
    for (; !way.empty(); way.pop_back()) {
        Type& type = *way.back();
        type.state = Type::State::decided;
        if (end != nullptr) {
            type.baseType = end->baseType;
            if (end->baseType == nullptr && end->reason == Reason::noClass) {
                type.reason = Reason::noClass;
            } else if (end->baseType == nullptr) {
                fail(type,
                     Reason::dangling,
                     "The type (" + context_.index.paths().text(end->path) +
                         ") that it refers to has no base type.");
            }
        }
        end = &type;
    }
}

/// Decides a type that refers to a base type, or returns the type that it refers to; null if the
/// reference leads nowhere.
ImplementationTypeImporter::Type* ImplementationTypeImporter::step(Type& type) {
    const char* wanted = type.isReference ? "IMPLEMENTATION-DATA-TYPE" : "SW-BASE-TYPE";
    if (!type.reference) {
        fail(type, Reason::dangling, std::string("The type refers to no ") + wanted + ".");
        return nullptr;
    }
    const std::string& target = type.reference->target;
    const auto [path, hasBase] = context_.index.resolve(*type.reference);
    if (!hasBase) {
        fail(type,
             Reason::dangling,
             "The reference base" +
                 (type.reference->base ? " (" + *type.reference->base + ")" : std::string()) +
                 " of the target (" + target + ") is not declared.");
        return nullptr;
    }
    if (!path) {
        fail(type, Reason::dangling, "The target (" + target + ") is not in the files.");
        return nullptr;
    }
    if (type.isReference) {
        if (const auto found = byPath_.find(*path); found != byPath_.end()) {
            return found->second == notHeld ? nullptr : &types_[found->second];
        }
    } else if (BaseTypeImporter::BaseType* baseType = baseTypes_.find(*path)) {
        type.baseType = baseType;
        return nullptr;
    }
    fail(type, Reason::wrongTarget, "The target (" + target + ") is no " + wanted + ".");
    return nullptr;
}

void ImplementationTypeImporter::fail(Type& type, Reason reason, const std::string& text) {
    type.reason = reason;
    context_.fileReport(type.file).find(
        type.reference ? type.referencePlace : type.place, reason, text);
}

} // namespace velum::dictionary
