// Apart from the three functions that it calls, so that no compiler merges them: a program may put
// its own in their place.

#include "keptvalue.h"
#include "qob/kernel/meta/metaclasscreation.h"

namespace QOB {

using NSInterface::ClassIntf;

namespace {

void fillTable(MetaClassDescription const& description) noexcept {
    if (description.entries == nullptr) {
        return;
    }
    for (unsigned id = 1; id <= description.propertyCount; ++id) {
        MetaPropertyEntry const& entry = description.entries[id];
        entry.description->redefinedCount = entry.redefinedCount;
        entry.description->redefined = entry.redefined;
        entry.description->subsettedCount = entry.subsettedCount;
        entry.description->subsetted = entry.subsetted;
        description.methods->properties[id] = entry.description;
    }
}

} // namespace

void createMetaClass(ClassIntf*& meta,
                     MetaClassDescription const& description,
                     Factory const& factory,
                     Package const& package) {
    if (meta != nullptr) {
        return;
    }
    fillTable(description);
    IntrospectiveMethods& methods = *description.methods;
    static_cast<void>(factory.operator->()); // raises if it is empty
    internal::keepValue(factory.getDeviant(), meta);
    internal::keepValue(factory.getDeviant(), methods.meta);
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
    internal::keepValue(factory.getDeviant(), updated);
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
    if (meta != nullptr) {
        internal::keepValue(meta->getRootDeviant(), meta);
        internal::keepValue(meta->getRootDeviant(), description.methods->meta);
    }
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
            MetaPropertyDescription const* const property =
                each.methods->properties[each.propertyId];
            element = property != nullptr ? property->meta : nullptr;
        }
        if (element != nullptr) {
            applyTagToMetaElement(each.tag,
                                  ImmutableNamedElement(element, element->getRootDeviant()));
        }
    }
}

} // namespace QOB
