#include "dictionary/references.h"

#include <algorithm>
#include <array>

namespace velum::dictionary {

using arxml::Element;
using report::Reason;

namespace {

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

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
        return endsWith(kind, "-DATA-TYPE");
    }
    if (dest == "APPLICATION-DATA-TYPE" || dest == "APPLICATION-COMPOSITE-DATA-TYPE") {
        return endsWith(kind, "-DATA-TYPE") && kind != "IMPLEMENTATION-DATA-TYPE" &&
               (dest == "APPLICATION-DATA-TYPE" || kind != "APPLICATION-PRIMITIVE-DATA-TYPE");
    }
    return dest == "ABSTRACT-IMPLEMENTATION-DATA-TYPE" && kind == "IMPLEMENTATION-DATA-TYPE";
}

std::string causeOf(const arxml::DocumentIndex::Resolution& resolution,
                    const arxml::Reference& reference) {
    const std::string target = bracketed(reference.target);
    if (resolution.hasBase) {
        return "The target " + target + " is not in the files.";
    }
    const std::string base = reference.base ? " " + bracketed(*reference.base) : std::string();
    return "The reference base" + base + " of the target " + target + " is not declared.";
}

} // namespace

References::References(const ImportContext& context, const Catalogue& catalogue)
    : context_(context),
      catalogue_(catalogue),
      paths_(context.documents.store.size(), nowhere),
      isJudged_(context.documents.store.size(), false) {
    checkLoose();
    const arxml::Documents& documents = context_.documents;
    for (arxml::ElementStore::Index i = 0; i < documents.store.size(); ++i) {
        const Element reference = documents.store.at(i);
        if (!documents.names.isReference(reference.name()) || reference.text().empty()) {
            continue;
        }
        const arxml::Reference written = arxml::referenceAt(reference);
        const auto resolution = documents.index.resolve(written);
        if (resolution.path) {
            paths_[i] = *resolution.path;
        } else {
            context_.refuse(reference, Reason::dangling, causeOf(resolution, written));
        }
    }
}

void References::checkLoose() const {
    for (const arxml::LooseReference& loose : context_.documents.looseReferences) {
        const auto resolution = context_.documents.index.resolve(loose.reference);
        if (!resolution.path) {
            context_.report.files[loose.file].find({loose.position, loose.path},
                                                   Reason::dangling,
                                                   causeOf(resolution, loose.reference));
        }
    }
}

Element References::target(Element reference, std::initializer_list<arxml::NameId> wanted) {
    if (!reference) {
        return {};
    }
    arxml::PathId& path = paths_[reference.index()];
    const bool isJudged = isJudged_[reference.index()];
    isJudged_[reference.index()] = true;
    if (path == nowhere && reference.text().empty() && !isJudged) {
        context_.refuse(reference, Reason::dangling, "The reference is empty.");
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
                            std::initializer_list<arxml::NameId> wanted) const {
    const std::string text = bracketed(reference.text());
    if (!target || std::find(wanted.begin(), wanted.end(), target.name()) == wanted.end()) {
        context_.refuse(reference,
                        Reason::wrongTarget,
                        "The target " + text + " is no " +
                            std::string(context_.documents.names.text(*wanted.begin())) + ".");
        return false;
    }
    const std::string kind(context_.kind(target));
    const std::string_view dest = reference.attribute("DEST").value_or(kind);
    if (!destFits(dest, kind)) {
        context_.refuse(reference,
                        Reason::wrongTarget,
                        "The target " + text + " is a " + kind + ", not the " + std::string(dest) +
                            " that DEST says.");
        return false;
    }
    return true;
}

void References::reportNoObject(Element reference, Element target) const {
    context_.refuse(reference,
                    Reason::dangling,
                    "No object is made of the target " + bracketed(context_.path(target)) + ".");
}

} // namespace velum::dictionary
