// Apart from the three functions that it calls, so that no compiler merges them: a program may put
// its own in their place.

#include "propertyindex.h"
#include "qob/kernel/meta/metaclasscreation.h"

namespace QOB {

using NSInterface::ClassIntf;

void createMetaClass(ClassIntf*& meta,
                     MetaClassDescription const& description,
                     Factory const& factory,
                     Package const& package) {
    if (meta != nullptr) {
        return;
    }
    IntrospectiveMethods& methods = *description.methods;
    for (unsigned id = 1; description.properties != nullptr && id <= description.propertyCount;
         ++id) {
        methods.properties[id] = &description.properties[id - 1];
    }
    staticCreateMetaClass(meta,
                          factory,
                          package,
                          methods.properties,
                          description.propertyCount,
                          description.name,
                          description.dottedName,
                          description.isAbstract,
                          description.comments);
    methods.meta = meta;
}

void updateMetaClass(bool& updated,
                     ClassIntf* meta,
                     MetaClassDescription const& description,
                     Factory const& factory) {
    if (updated) {
        return;
    }
    updated = true;
    if (meta == nullptr) {
        return;
    }
    Package const package = meta->getPackage(factory.getDeviant());
    staticUpdateMeta(meta,
                     factory,
                     package,
                     description.methods->properties,
                     description.propertyCount,
                     description.name,
                     description.dottedName,
                     description.methods);
}

void destroyMetaClass(ClassIntf*& meta, MetaClassDescription const& description) {
    staticDestroyMeta(meta,
                      description.methods->properties,
                      description.propertyCount,
                      description.name,
                      description.dottedName);
    forgetMetaClass(meta, description);
}

void forgetMetaClass(ClassIntf*& meta, MetaClassDescription const& description) noexcept {
    ++internal::PropertyIndex::generation();
    for (unsigned id = 1; id <= description.propertyCount; ++id) {
        if (description.methods->properties[id] != nullptr) {
            description.methods->properties[id]->meta = nullptr;
        }
    }
    description.methods->meta = nullptr;
    meta = nullptr;
}

void applyTags(std::span<TagBinding const> tags) {
    for (TagBinding const& each : tags) {
        NSInterface::NamedElementIntf* element = each.methods->meta;
        if (each.propertyId != 0) {
            element = each.methods->properties[each.propertyId]->meta;
        }
        if (element != nullptr) {
            applyTagToMetaElement(each.tag,
                                  ImmutableNamedElement(element, element->getRootDeviant()));
        }
    }
}

} // namespace QOB
