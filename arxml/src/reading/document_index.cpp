#include "reading/document_index.h"

namespace velum::arxml {

namespace {

/// Bases that are themselves relative to bases; a longer chain is a circle.
constexpr std::size_t longestBaseChain = 32;

} // namespace

Reference referenceAt(Element element) {
    return {element.text(), element.attribute("BASE"), element.package()};
}

void DocumentIndex::addBase(PathId package, ReferenceBase const& base) {
    bases_.try_emplace({package, base.label}, base);
    if (base.isDefault) {
        defaultBases_.try_emplace(package, base);
    }
}

DocumentIndex::ReferenceBase const* DocumentIndex::findBase(Reference const& reference,
                                                            PathId& package) const {
    for (package = reference.package;; package = paths_.parent(package)) {
        if (reference.base) {
            if (const auto found = bases_.find({package, std::string(*reference.base)});
                found != bases_.end()) {
                return &found->second;
            }
        } else if (const auto found = defaultBases_.find(package); found != defaultBases_.end()) {
            return &found->second;
        }
        if (package == PathTree::root) {
            return nullptr;
        }
    }
}

std::optional<DocumentIndex::Chain> DocumentIndex::chainOf(Reference const& reference) const {
    Chain chain{{&reference}, std::nullopt};
    while (chain.references.back()->target.substr(0, 1) != "/") {
        PathId package = PathTree::root;
        ReferenceBase const* base = findBase(*chain.references.back(), package);
        if (base == nullptr || chain.references.size() > longestBaseChain) {
            return std::nullopt;
        }
        if (base->isThisPackage) {
            chain.from = package;
            break;
        }
        chain.references.push_back(&base->package);
    }
    return chain;
}

DocumentIndex::Resolution DocumentIndex::resolve(Reference const& reference) const {
    if (reference.target.substr(0, 1) == "/") {
        return {paths_.find(PathTree::root, reference.target.substr(1)), true};
    }
    const std::optional<Chain> chain = chainOf(reference);
    if (!chain) {
        return {std::nullopt, false};
    }
    std::optional<PathId> path = chain->from ? chain->from : PathTree::root;
    for (auto each = chain->references.rbegin(); path && each != chain->references.rend(); ++each) {
        const std::string_view names = (*each)->target;
        path = paths_.find(*path, names.substr(0, 1) == "/" ? names.substr(1) : names);
    }
    return {path, true};
}

std::string DocumentIndex::pathFor(Reference const& reference) const {
    const std::optional<Chain> chain = chainOf(reference);
    if (!chain) {
        return std::string(reference.target);
    }
    const bool isInPackage = chain->from && *chain->from != PathTree::root;
    std::string path = isInPackage ? paths_.text(*chain->from) : std::string();
    for (auto each = chain->references.rbegin(); each != chain->references.rend(); ++each) {
        path += (*each)->target.substr(0, 1) == "/" ? "" : "/";
        path += (*each)->target;
    }
    return path;
}

} // namespace velum::arxml
