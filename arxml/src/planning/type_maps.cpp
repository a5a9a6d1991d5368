#include "planning/type_maps.h"

namespace velum::arxml {

TypeMaps::TypeMaps(ImportContext const& context, Catalogue const& catalogue, References& references)
    : context_(context) {
    for (const Element set : catalogue.ofKind(element::dataTypeMappingSet)) {
        for (const Element map : set.child(element::dataTypeMaps).children()) {
            add(map, references);
        }
    }
}

void TypeMaps::add(Element map, References& references) {
    const Element applicationRef = map.child(element::applicationDataTypeRef);
    if (!references.leadsSomewhere(applicationRef)) {
        return; // of no type that is here
    }
    const Element application = references.target(applicationRef,
                                                  {element::applicationPrimitiveDataType,
                                                   element::applicationArrayDataType,
                                                   element::applicationRecordDataType});
    const Element implementation = references.target(map.child(element::implementationDataTypeRef),
                                                     {element::implementationDataType});
    if (!application) {
        return;
    }
    Map& known = byType_[application.index()];
    if (known.maps.empty() || (!known.implementation && implementation)) {
        known = {implementation, {map}};
    } else if (known.implementation == implementation) {
        known.maps.push_back(map);
    } else if (implementation) {
        context_.find(map,
                      Reason::contradiction,
                      "The type " + bracketed(context_.path(application)) + " is mapped to " +
                          bracketed(context_.path(known.implementation)) + " at " +
                          context_.whereabouts(known.maps.front()) + ", which counts, and to " +
                          bracketed(context_.path(implementation)) + " here.");
    }
}

TypeMaps::Map const* TypeMaps::find(Element applicationType) const {
    const auto found = byType_.find(applicationType.index());
    return found == byType_.end() ? nullptr : &found->second;
}

void TypeMaps::consume(Map const& map) const {
    for (const Element written : map.maps) {
        context_.account.consume(written.child(element::applicationDataTypeRef));
        context_.account.consume(written.child(element::implementationDataTypeRef));
    }
}

} // namespace velum::arxml
