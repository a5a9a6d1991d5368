#include "qob/qob/property.h"

#include "metaobject.h"
#include "namedelementstate.h"
#include "qob/kernel/factory/create.h"
#include "qob/kernel/property/assignrules.h"
#include "qob/kernel/property/multivalued.h"
#include "qob/kernel/property/optionalvalue.h"
#include "qob/kernel/property/ownerend.h"
#include "qob/kernel/property/reference.h"
#include "qob/kernel/property/reflective.h"

namespace QOB {

using NSInterface::PropertyIntf;

namespace {

struct PropertyDescription {
    using Interface = PropertyIntf;
    static constexpr char const* name = PropertyIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Single<PropertyIntf::OwningClassId,
                                            &PropertyIntf::getOwningClass,
                                            &PropertyIntf::hasOwningClass,
                                            &PropertyIntf::setOwningClass,
                                            &PropertyIntf::removeOwningClass,
                                            &PropertyIntf::setOnlyOwningClass,
                                            &PropertyIntf::removeOnlyOwningClass>,
                         reflective::Single<PropertyIntf::TypeId,
                                            &PropertyIntf::getType,
                                            &PropertyIntf::hasType,
                                            &PropertyIntf::setType,
                                            &PropertyIntf::removeType>,
                         reflective::Single<PropertyIntf::LowerId,
                                            &PropertyIntf::getLower,
                                            reflective::always,
                                            &PropertyIntf::setLower>,
                         reflective::Single<PropertyIntf::UpperId,
                                            &PropertyIntf::getUpper,
                                            reflective::always,
                                            &PropertyIntf::setUpper>,
                         reflective::Single<PropertyIntf::FlagsId,
                                            &PropertyIntf::getFlags,
                                            reflective::always,
                                            &PropertyIntf::setFlags>,
                         reflective::Single<PropertyIntf::IsPrivateId,
                                            &PropertyIntf::isPrivate,
                                            reflective::always,
                                            &PropertyIntf::setIsPrivate>,
                         reflective::Single<PropertyIntf::DefaultValueId,
                                            &PropertyIntf::getDefaultValue,
                                            reflective::always,
                                            &PropertyIntf::setDefaultValue>,
                         reflective::Single<PropertyIntf::DocumentationId,
                                            &PropertyIntf::getDocumentation,
                                            &PropertyIntf::hasDocumentation,
                                            &PropertyIntf::setDocumentation,
                                            &PropertyIntf::removeDocumentation>,
                         reflective::Single<PropertyIntf::OppositeId,
                                            &PropertyIntf::getOpposite,
                                            &PropertyIntf::hasOpposite,
                                            &PropertyIntf::setOpposite,
                                            &PropertyIntf::removeOpposite>,
                         reflective::Single<PropertyIntf::AssociationNameId,
                                            &PropertyIntf::getAssociationName,
                                            &PropertyIntf::hasAssociationName,
                                            &PropertyIntf::setAssociationName,
                                            &PropertyIntf::removeAssociationName>,
                         reflective::Single<PropertyIntf::OtherEndNameId,
                                            &PropertyIntf::getOtherEndName,
                                            &PropertyIntf::hasOtherEndName,
                                            &PropertyIntf::setOtherEndName,
                                            &PropertyIntf::removeOtherEndName>,
                         reflective::Many<PropertyIntf::RedefinedPropertiesId,
                                          &PropertyIntf::getRedefinedProperties,
                                          &PropertyIntf::getRedefinedPropertiesWithoutAssociation>,
                         reflective::Many<PropertyIntf::SubsettedPropertiesId,
                                          &PropertyIntf::getSubsettedProperties,
                                          &PropertyIntf::getSubsettedPropertiesWithoutAssociation>>;
};

} // namespace

namespace NSInterface {

constinit IntrospectiveMethods PropertyIntf::sIntrospectiveMethods =
    reflective::methodsOf<PropertyDescription>();

bool PropertyIntf::hasOwningClass(Deviant deviant) const {
    return getOwningClass(deviant).isValid();
}
void PropertyIntf::removeOwningClass(Deviant deviant) {
    if (hasOwningClass(deviant)) {
        property::removeOwner<&ClassIntf::getOwnedAttributesWithoutAssociation, Class>(this,
                                                                                       deviant);
    }
}
void PropertyIntf::setOwningClass(Deviant deviant, Class const& owner) {
    property::setOwner<&ClassIntf::getOwnedAttributesWithoutAssociation,
                       &PropertyIntf::setOnlyOwningClass>(
        this, deviant, owner, sIntrospectiveMethods, OwningClassId);
}
Class PropertyIntf::getOwningClass(Deviant deviant) const {
    return property::getOwner<Class>(this, deviant);
}
void PropertyIntf::removeOnlyOwningClass(Deviant deviant) {
    removeOnlyContainerQOB(deviant);
}
void PropertyIntf::setOnlyOwningClass(Deviant deviant, Class const& owner) {
    property::setOnlyOwner<&ClassIntf::getOwnedAttributesWithoutAssociation,
                           &PropertyIntf::removeOwningClass>(
        this, deviant, owner, sIntrospectiveMethods, OwningClassId);
}

void PropertyIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    Class const owner(container);
    QOB_REQUIRE(owner.isValid() || !container.isValid(), "The container of a property is a class.");
    setOwningClass(deviant, owner);
}
void PropertyIntf::removeContainerQOB(Deviant deviant) {
    removeOwningClass(deviant);
}

bool PropertyIntf::hasType(Deviant deviant) const {
    return getType(deviant).isValid();
}
void PropertyIntf::removeType(Deviant deviant) {
    property::removeOnlyReference<&PropertyIntf::getType, &PropertyIntf::setType>(
        this, deviant, sIntrospectiveMethods, TypeId);
}
void PropertyIntf::setType(Deviant deviant, Type const& type) {
    property::
        setReference<&PropertyIntf::getType, &PropertyIntf::setType, &PropertyIntf::removeType>(
            this, deviant, type, sIntrospectiveMethods, TypeId);
}
Type PropertyIntf::getType(Deviant deviant) const {
    return property::get<&PropertyIntf::getType>(this, deviant);
}

void PropertyIntf::setLower(Deviant deviant, Integer const& lower) {
    property::setMandatory<&PropertyIntf::getLower, &PropertyIntf::setLower>(this, deviant, lower);
}
Integer PropertyIntf::getLower(Deviant deviant) const {
    return property::get<&PropertyIntf::getLower>(this, deviant);
}

void PropertyIntf::setUpper(Deviant deviant, Integer const& upper) {
    property::setMandatory<&PropertyIntf::getUpper, &PropertyIntf::setUpper>(this, deviant, upper);
}
Integer PropertyIntf::getUpper(Deviant deviant) const {
    return property::get<&PropertyIntf::getUpper>(this, deviant);
}

void PropertyIntf::setFlags(Deviant deviant, Integer const& flags) {
    property::setMandatory<&PropertyIntf::getFlags, &PropertyIntf::setFlags>(this, deviant, flags);
}
Integer PropertyIntf::getFlags(Deviant deviant) const {
    return property::get<&PropertyIntf::getFlags>(this, deviant);
}

void PropertyIntf::setIsPrivate(Deviant deviant, Boolean const& isPrivate) {
    property::setMandatory<&PropertyIntf::isPrivate, &PropertyIntf::setIsPrivate>(
        this, deviant, isPrivate);
}
Boolean PropertyIntf::isPrivate(Deviant deviant) const {
    return property::get<&PropertyIntf::isPrivate>(this, deviant);
}

void PropertyIntf::setDefaultValue(Deviant deviant, String const& text) {
    property::setMandatory<&PropertyIntf::getDefaultValue, &PropertyIntf::setDefaultValue>(
        this, deviant, text);
}
String PropertyIntf::getDefaultValue(Deviant deviant) const {
    return property::get<&PropertyIntf::getDefaultValue>(this, deviant);
}

bool PropertyIntf::hasDocumentation(Deviant deviant) const {
    return property::get<&PropertyIntf::hasDocumentation>(this, deviant);
}
void PropertyIntf::removeDocumentation(Deviant deviant) {
    property::removeOptional<&PropertyIntf::hasDocumentation, &PropertyIntf::removeDocumentation>(
        this, deviant);
}
void PropertyIntf::setDocumentation(Deviant deviant, String const& text) {
    property::setOptional<&PropertyIntf::getDocumentation,
                          &PropertyIntf::setDocumentation,
                          &PropertyIntf::removeDocumentation>(this, deviant, text);
}
String PropertyIntf::getDocumentation(Deviant deviant) const {
    return property::get<&PropertyIntf::getDocumentation>(this, deviant);
}

bool PropertyIntf::hasOpposite(Deviant deviant) const {
    return getOpposite(deviant).isValid();
}
void PropertyIntf::removeOpposite(Deviant deviant) {
    property::removeOnlyReference<&PropertyIntf::getOpposite, &PropertyIntf::setOpposite>(
        this, deviant, sIntrospectiveMethods, OppositeId);
}
void PropertyIntf::setOpposite(Deviant deviant, Property const& opposite) {
    property::setReference<&PropertyIntf::getOpposite,
                           &PropertyIntf::setOpposite,
                           &PropertyIntf::removeOpposite>(
        this, deviant, opposite, sIntrospectiveMethods, OppositeId);
}
Property PropertyIntf::getOpposite(Deviant deviant) const {
    return property::get<&PropertyIntf::getOpposite>(this, deviant);
}

bool PropertyIntf::hasAssociationName(Deviant deviant) const {
    return property::get<&PropertyIntf::hasAssociationName>(this, deviant);
}
void PropertyIntf::removeAssociationName(Deviant deviant) {
    property::removeOptional<&PropertyIntf::hasAssociationName,
                             &PropertyIntf::removeAssociationName>(this, deviant);
}
void PropertyIntf::setAssociationName(Deviant deviant, String const& name) {
    property::setOptional<&PropertyIntf::getAssociationName,
                          &PropertyIntf::setAssociationName,
                          &PropertyIntf::removeAssociationName>(this, deviant, name);
}
String PropertyIntf::getAssociationName(Deviant deviant) const {
    return property::get<&PropertyIntf::getAssociationName>(this, deviant);
}

bool PropertyIntf::hasOtherEndName(Deviant deviant) const {
    return property::get<&PropertyIntf::hasOtherEndName>(this, deviant);
}
void PropertyIntf::removeOtherEndName(Deviant deviant) {
    property::removeOptional<&PropertyIntf::hasOtherEndName, &PropertyIntf::removeOtherEndName>(
        this, deviant);
}
void PropertyIntf::setOtherEndName(Deviant deviant, String const& name) {
    property::setOptional<&PropertyIntf::getOtherEndName,
                          &PropertyIntf::setOtherEndName,
                          &PropertyIntf::removeOtherEndName>(this, deviant, name);
}
String PropertyIntf::getOtherEndName(Deviant deviant) const {
    return property::get<&PropertyIntf::getOtherEndName>(this, deviant);
}

Sequence<Property> PropertyIntf::getRedefinedProperties(Deviant deviant) {
    return getRedefinedPropertiesWithoutAssociation(deviant);
}
Sequence<Property> PropertyIntf::getRedefinedPropertiesWithoutAssociation(Deviant deviant) {
    return property::elements<Property>(
        this, deviant, sIntrospectiveMethods, RedefinedPropertiesId);
}

Sequence<Property> PropertyIntf::getSubsettedProperties(Deviant deviant) {
    return getSubsettedPropertiesWithoutAssociation(deviant);
}
Sequence<Property> PropertyIntf::getSubsettedPropertiesWithoutAssociation(Deviant deviant) {
    return property::elements<Property>(
        this, deviant, sIntrospectiveMethods, SubsettedPropertiesId);
}

// A state is bound to nothing.

void PropertyIntf::internal_bind(PropertyBinding const&) {
}
PropertyBinding PropertyIntf::internal_binding() const {
    return {};
}

void PropertyIntf::internal_deviationAssign(Deviant deviant,
                                            ObjectIntf* source,
                                            Deviant sourceDeviant) {
    property::assignBlocks<PropertyIntf, PropertyIntf, NamedElementIntf, ClassObjectIntf>(
        this, deviant, source, sourceDeviant);
}

void PropertyIntf::internal_assignBlock(Deviant deviant,
                                        PropertyIntf const* source,
                                        Deviant sourceDeviant) {
    using Self = PropertyIntf;
    property::assignEach<
        property::
            AssignReference<&Self::hasType, &Self::getType, &Self::setType, &Self::removeType>,
        property::AssignMandatory<&Self::getLower, &Self::setLower>,
        property::AssignMandatory<&Self::getUpper, &Self::setUpper>,
        property::AssignMandatory<&Self::getFlags, &Self::setFlags>,
        property::AssignMandatory<&Self::isPrivate, &Self::setIsPrivate>,
        property::AssignMandatory<&Self::getDefaultValue, &Self::setDefaultValue>,
        property::AssignOptional<&Self::hasDocumentation,
                                 &Self::getDocumentation,
                                 &Self::setDocumentation,
                                 &Self::removeDocumentation>,
        property::AssignReference<&Self::hasOpposite,
                                  &Self::getOpposite,
                                  &Self::setOpposite,
                                  &Self::removeOpposite>,
        property::AssignOptional<&Self::hasAssociationName,
                                 &Self::getAssociationName,
                                 &Self::setAssociationName,
                                 &Self::removeAssociationName>,
        property::AssignOptional<&Self::hasOtherEndName,
                                 &Self::getOtherEndName,
                                 &Self::setOtherEndName,
                                 &Self::removeOtherEndName>,
        property::AssignObjects<&Self::getRedefinedProperties>,
        property::AssignObjects<&Self::getSubsettedProperties>>(
        this, deviant, source, sourceDeviant);
}

} // namespace NSInterface

namespace {

class PropertyDeviantImpl final
    : public NSImplementation::NamedElementState<PropertyDeviantImpl, PropertyIntf> {
public:
    struct Fields : NSImplementation::NamedElementFields {
        CountedPointer<NSInterface::TypeIntf> type;
        CountedPointer<PropertyIntf> opposite;
        Integer lower = 0;
        Integer upper = 1;
        Integer flags = 0;
        Boolean isPrivate = false;
        String defaultValue = "";
        String documentation;
        String associationName;
        String otherEndName;
        NSImplementation::OwnedList<Property> redefinedProperties;
        NSImplementation::OwnedList<Property> subsettedProperties;
    };

    bool hasType(Deviant) const override { return bool(fields_.type); }
    void removeType(Deviant) override { fields_.type = {}; }
    void setType(Deviant, Type const& type) override { fields_.type = CountedPointer(type.get()); }
    Type getType(Deviant deviant) const override { return {fields_.type.get(), deviant}; }
    bool hasOpposite(Deviant) const override { return bool(fields_.opposite); }
    void removeOpposite(Deviant) override { fields_.opposite = {}; }
    void setOpposite(Deviant, Property const& opposite) override {
        fields_.opposite = CountedPointer(opposite.get());
    }
    Property getOpposite(Deviant deviant) const override {
        return {fields_.opposite.get(), deviant};
    }
    void setLower(Deviant, Integer const& lower) override { fields_.lower = lower; }
    Integer getLower(Deviant) const override { return fields_.lower; }
    void setUpper(Deviant, Integer const& upper) override { fields_.upper = upper; }
    Integer getUpper(Deviant) const override { return fields_.upper; }
    void setFlags(Deviant, Integer const& flags) override { fields_.flags = flags; }
    Integer getFlags(Deviant) const override { return fields_.flags; }
    void setIsPrivate(Deviant, Boolean const& isPrivate) override { fields_.isPrivate = isPrivate; }
    Boolean isPrivate(Deviant) const override { return fields_.isPrivate; }
    void setDefaultValue(Deviant, String const& text) override { fields_.defaultValue = text; }
    String getDefaultValue(Deviant) const override { return fields_.defaultValue; }
    bool hasDocumentation(Deviant) const override { return fields_.documentation.isValid(); }
    void removeDocumentation(Deviant) override { fields_.documentation = String(); }
    void setDocumentation(Deviant, String const& text) override { fields_.documentation = text; }
    String getDocumentation(Deviant) const override { return fields_.documentation; }
    bool hasAssociationName(Deviant) const override { return fields_.associationName.isValid(); }
    void removeAssociationName(Deviant) override { fields_.associationName = String(); }
    void setAssociationName(Deviant, String const& name) override {
        fields_.associationName = name;
    }
    String getAssociationName(Deviant) const override { return fields_.associationName; }
    bool hasOtherEndName(Deviant) const override { return fields_.otherEndName.isValid(); }
    void removeOtherEndName(Deviant) override { fields_.otherEndName = String(); }
    void setOtherEndName(Deviant, String const& name) override { fields_.otherEndName = name; }
    String getOtherEndName(Deviant) const override { return fields_.otherEndName; }
    Sequence<Property> getRedefinedProperties(Deviant deviant) override {
        return fields_.redefinedProperties.read(deviant);
    }
    Sequence<Property> getRedefinedPropertiesWithoutAssociation(Deviant deviant) override {
        return fields_.redefinedProperties.write(deviant);
    }
    Sequence<Property> getSubsettedProperties(Deviant deviant) override {
        return fields_.subsettedProperties.read(deviant);
    }
    Sequence<Property> getSubsettedPropertiesWithoutAssociation(Deviant deviant) override {
        return fields_.subsettedProperties.write(deviant);
    }

    Fields fields_;
};

class PropertyImpl final : public NSImplementation::MetaObject<PropertyDeviantImpl,
                                                               PropertyIntf,
                                                               NSInterface::NamedElementIntf> {
public:
    void internal_bind(PropertyBinding const& binding) override { binding_ = binding; }
    PropertyBinding internal_binding() const override { return binding_; }

private:
    PropertyBinding binding_;
};

} // namespace

Property Property::create(Model const& model) {
    return createObject<Property, PropertyImpl>(model, NSImplementation::Unnamed());
}
Property Property::create(Model const& model, String const& name) {
    return createObject<Property, PropertyImpl>(model, NSImplementation::Named{name});
}
Property Property::createWithId(Model const& model, Integer const& id) {
    return createObject<Property, PropertyImpl>(model, id);
}

} // namespace QOB
