#include "planning/catalogue.h"

#include "planning/duplicates.h"

#include <algorithm>
#include <array>

namespace velum::arxml {

namespace {

constexpr std::array wantedKinds = {element::applicationArrayDataType,
                                    element::applicationPrimitiveDataType,
                                    element::applicationRecordDataType,
                                    element::compuMethod,
                                    element::constantSpecification,
                                    element::dataConstr,
                                    element::dataTypeMappingSet,
                                    element::implementationDataType,
                                    element::physicalDimension,
                                    element::swBaseType,
                                    element::swRecordLayout,
                                    element::unit};

/// What a reference base says is taken by the reader; that everything of a kind lies in it
/// (IS-GLOBAL) says nothing about a reference that names it.
void accountForBases(ImportContext const& context, Element bases) {
    for (const Element base : bases.children()) {
        for (const Element part : base.children()) {
            const bool isTaken =
                part.is(element::shortLabel) || part.is(element::isDefault) ||
                part.is(element::baseIsThisPackage) || part.is(element::packageRef) ||
                (part.is(element::isGlobal) && part.text() != "true" && part.text() != "1");
            if (base.is(element::referenceBase) && isTaken) {
                context.account.consume(part);
            }
        }
    }
    context.account.consume(bases);
}

} // namespace

bool isWanted(NameId name) {
    return std::find(wantedKinds.begin(), wantedKinds.end(), name) != wantedKinds.end();
}

Catalogue::Catalogue(ImportContext const& context)
    : byKind_(element::countOfKnown), byPath_(context.documents.index.paths().end()) {
    ElementStore const& store = context.documents.store;
    for (ElementStore::Tree const& tree : store.trees()) {
        const Element outermost = store.at(tree.first);
        if (outermost.is(element::referenceBases)) {
            accountForBases(context, outermost);
        } else {
            admit(context, outermost);
        }
    }
}

void Catalogue::admit(ImportContext const& context, Element element) {
    const std::string kind(context.kind(element));
    if (element.child(element::shortName).text().empty()) {
        context.refuse(element, Reason::noName, "This " + kind + " has no SHORT-NAME.");
        return;
    }
    if (context.documents.index.paths().isTooLong(element.path())) {
        context.account.skip(element, Reason::longPath); // reported where the path gets too long
        return;
    }
    Element& first = byPath_[element.path()];
    if (!first || (element.is(element::dataTypeMappingSet) && first.is(element.name()))) {
        first = first ? first : element;
        byKind_[element.name()].push_back(element);
        return;
    }
    const auto difference = differenceOf(context, first, element);
    if (!difference) {
        context.account.shareFate(element, first);
        return;
    }
    const std::string text = "Another " + std::string(context.kind(first)) +
                             " of this path counts, at " + context.whereabouts(first) + ": ";
    if (difference->isHeld) {
        context.find(element, Reason::duplicatePath, text + difference->text + ".");
    } else {
        context.note(element,
                     Reason::duplicatePath,
                     text + difference->text + ", which makes no difference to the model.");
    }
    context.account.skip(element, Reason::duplicatePath);
}

} // namespace velum::arxml
