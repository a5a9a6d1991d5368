#include "dictionary/type_maps.h"

namespace velum::dictionary {

namespace element = arxml::element;
using arxml::Element;

TypeMaps::TypeMaps(const Catalogue& catalogue, References& references) {
    for (const Element set : catalogue.ofKind(element::dataTypeMappingSet)) {
        for (const Element map : set.child(element::dataTypeMaps).children()) {
            const Element applicationRef = map.child(element::applicationDataTypeRef);
            const Element implementationRef = map.child(element::implementationDataTypeRef);
            const Element application = references.target(applicationRef,
                                                          {element::applicationPrimitiveDataType,
                                                           element::applicationArrayDataType,
                                                           element::applicationRecordDataType});
            const Element implementation =
                references.target(implementationRef, {element::implementationDataType});
            if (application) {
                byType_.try_emplace(application.index(),
                                    Map{applicationRef, implementationRef, implementation});
            }
        }
    }
}

const TypeMaps::Map* TypeMaps::find(Element applicationType) const {
    const auto found = byType_.find(applicationType.index());
    return found == byType_.end() ? nullptr : &found->second;
}

} // namespace velum::dictionary
