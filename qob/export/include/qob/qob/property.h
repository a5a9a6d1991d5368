#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/class.h"
#include "qob/qob/introspection.h"
#include "qob/qob/namedelement.h"
#include "qob/qob/nsinterface/propertyintf.h"

namespace QOB {
class ImmutableProperty;
class Property;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::PropertyIntf,
            QOB::ImmutableProperty,
            QOB::Property,
            "qob/export/include/qob/qob/property.h")

namespace QOB {

/// A property of a metaclass, for reading.
class ImmutableProperty : public NamedElementReading<ReadHandle<NSInterface::PropertyIntf>> {
public:
    using NamedElementReading::NamedElementReading;

    bool hasOwningClass() const { return (*this)->hasOwningClass(getDeviant()); }
    Class getOwningClass() const;
    bool hasType() const { return (*this)->hasType(getDeviant()); }
    Type getType() const;
    Integer getLower() const { return (*this)->getLower(getDeviant()); }
    /// PropertyIntf::Unbounded for any number.
    Integer getUpper() const { return (*this)->getUpper(getDeviant()); }
    Integer getFlags() const { return (*this)->getFlags(getDeviant()); }
    bool isReadOnly() const { return hasFlag(PropertyReadOnly); }
    bool isDerived() const { return hasFlag(PropertyDerived); }
    bool isComposite() const { return hasFlag(PropertyComposite); }
    bool isOrdered() const { return hasFlag(PropertyOrdered); }
    bool isUnique() const { return hasFlag(PropertyUnique); }
    bool isMultiValued() const { return hasFlag(PropertyMultiValued); }
    Boolean isPrivate() const { return (*this)->isPrivate(getDeviant()); }
    String getDefaultValue() const { return (*this)->getDefaultValue(getDeviant()); }
    bool hasDocumentation() const { return (*this)->hasDocumentation(getDeviant()); }
    String getDocumentation() const { return (*this)->getDocumentation(getDeviant()); }
    bool hasOpposite() const { return (*this)->hasOpposite(getDeviant()); }
    Property getOpposite() const;
    bool hasAssociationName() const { return (*this)->hasAssociationName(getDeviant()); }
    String getAssociationName() const { return (*this)->getAssociationName(getDeviant()); }
    bool hasOtherEndName() const { return (*this)->hasOtherEndName(getDeviant()); }
    String getOtherEndName() const { return (*this)->getOtherEndName(getDeviant()); }
    ImmutableSequence<ImmutableProperty> getRedefinedProperties() const;
    ImmutableSequence<ImmutableProperty> getSubsettedProperties() const;
    PropertyBinding internal_binding() const { return (*this)->internal_binding(); }

private:
    bool hasFlag(PropertyFlag flag) const { return (unsigned(int(getFlags())) & flag) != 0; }
};

/// A property of a metaclass.
class Property : public NamedElementWriting<WriteHandle<ImmutableProperty>> {
public:
    using NamedElementWriting::NamedElementWriting;

    /// A new property in the model and in the deviant of its handle, with the next free id.
    static QOB_EXPORT Property create(Model const& model);
    static QOB_EXPORT Property create(Model const& model, String const& name);
    /// With an id that the caller gives.
    static QOB_EXPORT Property createWithId(Model const& model, Integer const& id);

    void removeOwningClass() const { (*this)->removeOwningClass(getDeviant()); }
    void setOwningClass(Class const& owner) const { (*this)->setOwningClass(getDeviant(), owner); }
    void removeOnlyOwningClass() const { (*this)->removeOnlyOwningClass(getDeviant()); }
    void setOnlyOwningClass(Class const& owner) const {
        (*this)->setOnlyOwningClass(getDeviant(), owner);
    }
    void removeType() const { (*this)->removeType(getDeviant()); }
    void setType(Type const& type) const { (*this)->setType(getDeviant(), type); }
    void setLower(Integer const& lower) const { (*this)->setLower(getDeviant(), lower); }
    void setUpper(Integer const& upper) const { (*this)->setUpper(getDeviant(), upper); }
    void setFlags(Integer const& flags) const { (*this)->setFlags(getDeviant(), flags); }
    void setIsPrivate(Boolean const& isPrivate) const {
        (*this)->setIsPrivate(getDeviant(), isPrivate);
    }
    void setDefaultValue(String const& text) const { (*this)->setDefaultValue(getDeviant(), text); }
    void removeDocumentation() const { (*this)->removeDocumentation(getDeviant()); }
    void setDocumentation(String const& text) const {
        (*this)->setDocumentation(getDeviant(), text);
    }
    void removeOpposite() const { (*this)->removeOpposite(getDeviant()); }
    void setOpposite(Property const& opposite) const {
        (*this)->setOpposite(getDeviant(), opposite);
    }
    void removeAssociationName() const { (*this)->removeAssociationName(getDeviant()); }
    void setAssociationName(String const& name) const {
        (*this)->setAssociationName(getDeviant(), name);
    }
    void removeOtherEndName() const { (*this)->removeOtherEndName(getDeviant()); }
    void setOtherEndName(String const& name) const { (*this)->setOtherEndName(getDeviant(), name); }
    Sequence<Property> getRedefinedProperties() const {
        return (*this)->getRedefinedProperties(getDeviant());
    }
    Sequence<Property> getRedefinedPropertiesWithoutAssociation() const {
        return (*this)->getRedefinedPropertiesWithoutAssociation(getDeviant());
    }
    Sequence<Property> getSubsettedProperties() const {
        return (*this)->getSubsettedProperties(getDeviant());
    }
    Sequence<Property> getSubsettedPropertiesWithoutAssociation() const {
        return (*this)->getSubsettedPropertiesWithoutAssociation(getDeviant());
    }
    void internal_bind(PropertyBinding const& binding) const { (*this)->internal_bind(binding); }
};

inline Class ImmutableProperty::getOwningClass() const {
    return (*this)->getOwningClass(getDeviant());
}
inline Type ImmutableProperty::getType() const {
    return (*this)->getType(getDeviant());
}
inline Property ImmutableProperty::getOpposite() const {
    return (*this)->getOpposite(getDeviant());
}
inline Sequence<Property> Class::getOwnedAttributes() const {
    return (*this)->getOwnedAttributes(getDeviant());
}
inline Sequence<Property> Class::getOwnedAttributesWithoutAssociation() const {
    return (*this)->getOwnedAttributesWithoutAssociation(getDeviant());
}
// Read only, through views that could write.
inline ImmutableSequence<ImmutableProperty> ImmutableClass::getOwnedAttributes() const {
    return access()->getOwnedAttributesWithoutAssociation(getDeviant());
}
inline ImmutableSequence<ImmutableProperty> ImmutableProperty::getRedefinedProperties() const {
    return access()->getRedefinedPropertiesWithoutAssociation(getDeviant());
}
inline ImmutableSequence<ImmutableProperty> ImmutableProperty::getSubsettedProperties() const {
    return access()->getSubsettedPropertiesWithoutAssociation(getDeviant());
}

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::Property, "QOB.", "Property")
