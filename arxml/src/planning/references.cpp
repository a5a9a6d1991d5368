#include "planning/references.h"

#include <algorithm>
#include <array>

namespace velum::arxml {

namespace {

/// Whether the DEST of a reference fits an element of that kind: it may name a superclass.
bool destFits(std::string_view dest, std::string_view kind) {
    constexpr std::array<std::string_view, 9> superclasses = {"AR-ELEMENT",
                                                              "ATP-TYPE",
                                                              "ATP-CLASSIFIER",
                                                              "ATP-BLUEPRINT",
                                                              "ATP-BLUEPRINTABLE",
                                                              "COLLECTABLE-ELEMENT",
                                                              "IDENTIFIABLE",
                                                              "PACKAGEABLE-ELEMENT",
                                                              "REFERRABLE"};
    if (dest == kind ||
        std::find(superclasses.begin(), superclasses.end(), dest) != superclasses.end()) {
        return true;
    }
    if (dest == "AUTOSAR-DATA-TYPE") {
        return kind.ends_with("-DATA-TYPE");
    }
    if (dest == "APPLICATION-DATA-TYPE" || dest == "APPLICATION-COMPOSITE-DATA-TYPE") {
        return kind.ends_with("-DATA-TYPE") && kind != "IMPLEMENTATION-DATA-TYPE" &&
               (dest == "APPLICATION-DATA-TYPE" || kind != "APPLICATION-PRIMITIVE-DATA-TYPE");
    }
    return dest == "ABSTRACT-IMPLEMENTATION-DATA-TYPE" && kind == "IMPLEMENTATION-DATA-TYPE";
}

std::string causeOf(DocumentIndex const& index, Reference const& reference) {
    const std::string target = bracketed(reference.target);
    if (index.resolve(reference).hasBase) {
        return "The target " + target + " is not in the files.";
    }
    const std::string base = reference.base ? " " + bracketed(*reference.base) : std::string();
    return "The reference base" + base + " of the target " + target + " is not declared.";
}

} // namespace

References::References(ImportContext const& context, Catalogue const& catalogue)
    : context_(context),
      catalogue_(catalogue),
      paths_(context.documents.store.size(), nowhere),
      isJudged_(context.documents.store.size(), false) {
    Documents const& documents = context_.documents;
    for (ElementStore::Index i = 0; i < documents.store.size(); ++i) {
        const Element reference = documents.store.at(i);
        if (!documents.names.isReference(reference.name()) || reference.text().empty()) {
            continue;
        }
        const auto resolution = documents.index.resolve(referenceAt(reference));
        if (resolution.path) {
            paths_[i] = *resolution.path;
        } else {
            context_.account.skip(reference, Reason::dangling);
        }
    }
}

void References::reportRest() {
    reportLoose();
    Documents const& documents = context_.documents;
    for (ElementStore::Index i = 0; i < documents.store.size(); ++i) {
        const Element reference = documents.store.at(i);
        if (documents.names.isReference(reference.name()) && !reference.text().empty() &&
            paths_[i] == nowhere && !isJudged_[i]) {
            context_.logOf(reference).note(ImportContext::spotOf(reference),
                                           Reason::dangling,
                                           causeOf(documents.index, referenceAt(reference)),
                                           reference.text());
        }
    }
}

void References::reportLoose() const {
    DocumentIndex const& index = context_.documents.index;
    for (LooseReference const& loose : context_.documents.looseReferences) {
        if (!index.resolve(loose.reference).path) {
            context_.logs[loose.file].note({loose.position, loose.path},
                                           Reason::dangling,
                                           causeOf(index, loose.reference),
                                           loose.reference.target);
        }
    }
}

std::string References::pathFor(Element reference) const {
    return context_.documents.index.pathFor(referenceAt(reference));
}

bool References::leadsSomewhere(Element reference) const {
    return reference && paths_[reference.index()] != nowhere;
}

Element References::target(Element reference, std::initializer_list<NameId> wanted) {
    if (!reference) {
        return {};
    }
    PathId& path = paths_[reference.index()];
    const bool isJudged = isJudged_[reference.index()];
    isJudged_[reference.index()] = true;
    if (path == nowhere && !isJudged) {
        if (reference.text().empty()) {
            context_.refuse(reference, Reason::dangling, "The reference is empty.");
        } else {
            context_.refuseReference(reference,
                                     Reason::dangling,
                                     causeOf(context_.documents.index, referenceAt(reference)));
        }
    }
    if (path == nowhere || path == refused) {
        return {};
    }
    const Element target = catalogue_.find(path);
    if (!isJudged && !isAccepted(reference, target, wanted)) {
        path = refused;
        return {};
    }
    return target;
}

bool References::isAccepted(Element reference,
                            Element target,
                            std::initializer_list<NameId> wanted) const {
    const std::string text = bracketed(reference.text());
    if (!target || std::find(wanted.begin(), wanted.end(), target.name()) == wanted.end()) {
        context_.refuseReference(reference,
                                 Reason::wrongTarget,
                                 "The target " + text + " is no " +
                                     std::string(context_.documents.names.text(*wanted.begin())) +
                                     ".");
        return false;
    }
    const std::string kind(context_.kind(target));
    const std::string_view dest = reference.attribute("DEST").value_or(kind);
    if (!destFits(dest, kind)) {
        context_.logOf(reference).note(ImportContext::spotOf(reference),
                                       Reason::wrongTarget,
                                       "The target " + text + " is of the kind " + kind +
                                           "; DEST says " + std::string(dest) + ". It is used.",
                                       reference.text());
    }
    return true;
}

void References::reportNoObject(Element reference, Element target) const {
    context_.refuseReference(reference,
                             Reason::dangling,
                             "No object is made of the target " + bracketed(context_.path(target)) +
                                 ".");
}

} // namespace velum::arxml
