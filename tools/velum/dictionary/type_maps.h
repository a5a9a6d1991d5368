#pragma once

#include "dictionary/catalogue.h"
#include "dictionary/references.h"

#include <unordered_map>

namespace velum::dictionary {

/// Which implementation type stands for an application type, by the DATA-TYPE-MAPs.
///
/// Several maps of one application type may differ from each other; the first one counts.
class TypeMaps {
public:
    TypeMaps(const Catalogue& catalogue, References& references);

    struct Map {
        arxml::Element applicationRef;
        arxml::Element implementationRef;
        arxml::Element implementation; ///< empty if the map leads nowhere
    };
    /// Null if the type is not mapped.
    const Map* find(arxml::Element applicationType) const;

private:
    std::unordered_map<arxml::ElementStore::Index, Map> byType_;
};

} // namespace velum::dictionary
