#pragma once

#include "planning/import_context.h"

#include <cstdint>
#include <vector>

namespace velum::arxml {

/// Whether elements of that name, directly in a package, can become objects or tell about some.
bool isWanted(NameId name);

/// The elements that objects are made of, by kind and by path.
///
/// One path stands for one element. Where several have it, the first counts; those that say the
/// same share its fate, any other is reported and skipped, as is an element without a name. Mapping
/// sets identify nothing, so all of them count.
class Catalogue {
public:
    explicit Catalogue(ImportContext const& context);

    /// In the order of the files.
    std::vector<Element> const& ofKind(NameId kind) const { return byKind_[kind]; }

    /// The element at a path; empty if none is kept there.
    Element find(PathId path) const { return byPath_[path]; }

private:
    void admit(ImportContext const& context, Element element);

    std::vector<std::vector<Element>> byKind_; // by name
    std::vector<Element> byPath_;
};

} // namespace velum::arxml
