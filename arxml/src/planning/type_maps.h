#pragma once

#include "planning/catalogue.h"
#include "planning/references.h"

#include <unordered_map>
#include <vector>

namespace velum::arxml {

/// Which implementation type stands for an application type, by the DATA-TYPE-MAPs.
///
/// The maps of all sets count, of sets of one path in several files too. Of those of one
/// application type that differ from each other the first one counts, and the others are reported.
class TypeMaps {
public:
    TypeMaps(ImportContext const& context, Catalogue const& catalogue, References& references);

    struct Map {
        Element implementation;    ///< Empty if the map leads nowhere.
        std::vector<Element> maps; ///< The elements that say so, the first one in front.
    };
    /// Null if the type is not mapped.
    Map const* find(Element applicationType) const;

    /// Consumes the references of all maps that say this.
    void consume(Map const& map) const;

private:
    void add(Element map, References& references);

    ImportContext context_;
    std::unordered_map<ElementStore::Index, Map> byType_;
};

} // namespace velum::arxml
