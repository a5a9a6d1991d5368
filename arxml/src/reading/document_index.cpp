#include "reading/document_index.h"

#include <vector>

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

DocumentIndex::Resolution DocumentIndex::resolve(Reference const& reference) const {
    // Outwards through the bases to one that is absolute, then back through their targets.
    std::vector<Reference const*> relative;
    Reference const* current = &reference;
    std::optional<PathId> from;
    while (current->target.empty() || current->target.front() != '/') {
        PathId package = PathTree::root;
        ReferenceBase const* base = findBase(*current, package);
        if (base == nullptr || relative.size() > longestBaseChain) {
            return {std::nullopt, false};
        }
        relative.push_back(current);
        if (base->isThisPackage) {
            from = package;
            break;
        }
        current = &base->package;
    }
    if (!from) {
        from = paths_.find(PathTree::root, current->target.substr(1));
    }
    for (; from && !relative.empty(); relative.pop_back()) {
        from = paths_.find(*from, relative.back()->target);
    }
    return {from, true};
}

} // namespace velum::arxml
