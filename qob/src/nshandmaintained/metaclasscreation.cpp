#include "qob/kernel/meta/metaclasscreation.h"

#include "keptvalue.h"

namespace QOB {

using NSInterface::ClassIntf;
using NSInterface::PropertyIntf;

namespace {

Integer boundOf(unsigned bound) {
    return bound == MetaPropertyDescription::Unbounded ? ImmutableProperty::Unbounded
                                                       : static_cast<int>(bound);
}

/// The live property that a reference names; empty if there is none yet.
Property
propertyAt(PackageFunction package, unsigned classIndex, unsigned propertyId, Deviant deviant) {
    ClassIntf const* const owner = internal::classAt(package, classIndex);
    if (owner == nullptr) {
        return {};
    }
    IntrospectiveMethods const& record = *internal::recordAt(package, classIndex);
    MetaPropertyDescription const* const description =
        record.properties != nullptr ? record.properties[propertyId] : nullptr;
    return {description != nullptr ? description->meta : nullptr, deviant};
}

/// What a property can have by itself.
void createProperty(MetaPropertyDescription& description,
                    Factory const& factory,
                    Class const& owner) {
    internal::keepValue(factory.getDeviant(), description.meta);
    Property const property = factory.createProperty(description.name);
    description.meta = property.get();
    property.setLower(boundOf(description.lower));
    property.setUpper(boundOf(description.upper));
    property.setFlags(static_cast<int>(description.flags));
    property.setIsPrivate(description.isPrivate != 0);
    property.setDefaultValue(description.defaultValue);
    property.setDocumentation(description.documentation);
    property.setAssociationName(description.associationName);
    property.setOtherEndName(description.otherEndName);
    property.setOwningClass(owner);
}

void addReferred(Sequence<Property> const& properties,
                 PropertyReference const* references,
                 unsigned count,
                 Deviant deviant) {
    for (unsigned i = 0; i != count; ++i) {
        Property const property = propertyAt(
            references[i].package, references[i].classIndex, references[i].propertyId, deviant);
        if (property.isValid()) {
            properties.push_back(property);
        }
    }
}

/// What lies in other classes.
void updateProperty(MetaPropertyDescription const& description,
                    IntrospectiveMethods const* methods,
                    Deviant deviant) {
    Property const property(description.meta, deviant);
    property->internal_bind({methods, description.id});
    if (auto const* const type = internal::recordAt(description.package, description.typeIndex)) {
        property.setType(Type(type->meta, deviant));
    }
    if (description.hasOpposite != 0) {
        property.setOpposite(propertyAt(description.oppositePackage,
                                        description.oppositeClass,
                                        description.oppositeId,
                                        deviant));
    }
    addReferred(property.getRedefinedProperties(),
                description.redefined,
                description.redefinedCount,
                deviant);
    addReferred(property.getSubsettedProperties(),
                description.subsetted,
                description.subsettedCount,
                deviant);
}

} // namespace

void staticCreateMetaClass(ClassIntf*& result,
                           Factory const& factory,
                           Package const& package,
                           MetaPropertyDescription** properties,
                           unsigned count,
                           char const* name,
                           char const* /*dottedName*/,
                           bool isAbstract,
                           char const** const comments) {
    static_cast<void>(package.operator->()); // raises if it is empty
    Class const made = factory.createClass(name);
    made.setIsAbstract(isAbstract);
    for (char const* const* text = comments; text != nullptr && *text != nullptr; ++text) {
        made.getComments().push_back(*text);
    }
    for (unsigned id = 1; id <= count; ++id) {
        createProperty(*properties[id], factory, made);
    }
    made.setPackage(package);
    result = made.get();
}

void staticUpdateMeta(ClassIntf* meta,
                      Factory const& factory,
                      Package const& /*package*/,
                      MetaPropertyDescription** properties,
                      unsigned count,
                      char const* /*name*/,
                      char const* /*dottedName*/,
                      IntrospectiveMethods const* methods) {
    Deviant const deviant = factory.getDeviant();
    Class const updated(meta, deviant);
    updated->internal_bind({methods, count});
    for (SuperReference const* super = methods->supers;
         super != nullptr && super->package != nullptr;
         ++super) {
        Class const base(internal::classAt(super->package, super->classIndex), deviant);
        if (base.isValid()) {
            updated.getSupers().push_back(base);
        }
    }
    for (unsigned id = 1; id <= count; ++id) {
        updateProperty(*properties[id], methods, deviant);
    }
}

void staticDestroyMeta(ClassIntf* meta,
                       MetaPropertyDescription** properties,
                       unsigned count,
                       char const* /*name*/,
                       char const* /*dottedName*/) {
    if (meta == nullptr) {
        return;
    }
    Class const ending(meta, meta->getRootDeviant());
    Deviant const deviant = ending.getDeviant();
    for (unsigned id = 1; id <= count; ++id) {
        internal::keepValue(deviant, properties[id]->meta);
    }
    internal::DeviantData::of(deviant).history().keep(
        std::make_unique<internal::KeptBinding>(meta));
    ending.destroy(); // first: what is refused has changed nothing
    ending->internal_bind({});
    for (unsigned id = 1; id <= count; ++id) {
        properties[id]->meta = nullptr;
    }
}

} // namespace QOB
