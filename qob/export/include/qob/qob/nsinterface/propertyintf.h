#pragma once

#include "qob/qob/boolean.h"
#include "qob/qob/nsinterface/namedelementintf.h"

namespace QOB {

class Class;
class Property;
class Type;
template <class T>
class Sequence;

/// What leads from a live property to its values: the record of the class that declares it, and
/// its id there. Null for a property that no library has bound.
struct PropertyBinding {
    IntrospectiveMethods const* methods = nullptr;
    unsigned id = 0;

    friend bool operator==(PropertyBinding const&, PropertyBinding const&) = default;
};

namespace NSInterface {

/// A property of a metaclass as a live element of the meta-registry. It belongs to the class that
/// declares it and ends with it.
class QOB_EXPORT PropertyIntf : public InterfaceOf<PropertyIntf, NamedElementIntf> {
public:
    enum PropertyId : unsigned {
        OwningClassId = 1,
        TypeId = 2,
        LowerId = 3,
        UpperId = 4,
        FlagsId = 5,
        IsPrivateId = 6,
        DefaultValueId = 7,
        DocumentationId = 8,
        OppositeId = 9,
        AssociationNameId = 10,
        OtherEndNameId = 11,
        RedefinedPropertiesId = 12,
        SubsettedPropertiesId = 13
    };
    static constexpr char const* Name = "QOB.Property";
    static constexpr char const* ImmutableName = "QOB.ImmutableProperty";
    /// The upper bound of a property that has any number of values.
    static constexpr int Unbounded = -1;
    static IntrospectiveMethods sIntrospectiveMethods;

    /// The class that declares the property; the other end of its owned attributes. A set of one in
    /// another model raises QOB::Exception.
    virtual bool hasOwningClass(Deviant deviant) const;
    virtual void removeOwningClass(Deviant deviant);
    virtual void setOwningClass(Deviant deviant, Class const& owner);
    virtual Class getOwningClass(Deviant deviant) const;
    virtual void removeOnlyOwningClass(Deviant deviant);
    virtual void setOnlyOwningClass(Deviant deviant, Class const& owner);

    virtual bool hasType(Deviant deviant) const;
    virtual void removeType(Deviant deviant);
    virtual void setType(Deviant deviant, Type const& type);
    virtual Type getType(Deviant deviant) const;

    // Always there: a new property has none or one value, no flags, and is public.

    virtual void setLower(Deviant deviant, Integer const& lower);
    virtual Integer getLower(Deviant deviant) const;
    virtual void setUpper(Deviant deviant, Integer const& upper);
    virtual Integer getUpper(Deviant deviant) const;
    /// The bits of PropertyFlag.
    virtual void setFlags(Deviant deviant, Integer const& flags);
    virtual Integer getFlags(Deviant deviant) const;
    virtual void setIsPrivate(Deviant deviant, Boolean const& isPrivate);
    virtual Boolean isPrivate(Deviant deviant) const;
    /// The text of the default; empty if there is none.
    virtual void setDefaultValue(Deviant deviant, String const& text);
    virtual String getDefaultValue(Deviant deviant) const;

    virtual bool hasDocumentation(Deviant deviant) const;
    virtual void removeDocumentation(Deviant deviant);
    virtual void setDocumentation(Deviant deviant, String const& text);
    virtual String getDocumentation(Deviant deviant) const;

    /// The property at the other end of the association, if that is one.
    virtual bool hasOpposite(Deviant deviant) const;
    virtual void removeOpposite(Deviant deviant);
    virtual void setOpposite(Deviant deviant, Property const& opposite);
    virtual Property getOpposite(Deviant deviant) const;
    /// There on every property that is an end of an association; empty for one without a name.
    virtual bool hasAssociationName(Deviant deviant) const;
    virtual void removeAssociationName(Deviant deviant);
    virtual void setAssociationName(Deviant deviant, String const& name);
    virtual String getAssociationName(Deviant deviant) const;
    /// The name of an other end that is no property.
    virtual bool hasOtherEndName(Deviant deviant) const;
    virtual void removeOtherEndName(Deviant deviant);
    virtual void setOtherEndName(Deviant deviant, String const& name);
    virtual String getOtherEndName(Deviant deviant) const;

    /// The inherited properties in whose place this one stands.
    virtual Sequence<Property> getRedefinedProperties(Deviant deviant);
    virtual Sequence<Property> getRedefinedPropertiesWithoutAssociation(Deviant deviant);
    /// The properties whose values those of this one are part of.
    virtual Sequence<Property> getSubsettedProperties(Deviant deviant);
    virtual Sequence<Property> getSubsettedPropertiesWithoutAssociation(Deviant deviant);

    /// Ties the property to the functions of its class: once for the process, whatever the deviant.
    virtual void internal_bind(PropertyBinding const& binding);
    virtual PropertyBinding internal_binding() const;

    /// The container of a property is its class: a set of another object raises QOB::Exception.
    void setContainerQOB(Deviant deviant, ClassObject const& container) override;
    void removeContainerQOB(Deviant deviant) override;
    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    void internal_assignBlock(Deviant deviant, PropertyIntf const* source, Deviant sourceDeviant);
};

} // namespace NSInterface
} // namespace QOB
