#pragma once

#include "qob/qob/boolean.h"
#include "qob/qob/nsinterface/typeintf.h"

namespace QOB {

class Class;
class Property;
template <class T>
class Sequence;

namespace internal {
class PropertyIndex;
} // namespace internal

/// What leads from a live class to the functions of its instances: its record and how many
/// properties it declares. Null for a class that no library has bound.
struct ClassBinding {
    IntrospectiveMethods const* methods = nullptr;
    unsigned propertyCount = 0;
};

namespace NSInterface {

/// A metaclass as a live element of the meta-registry. It owns the properties that it declares.
class QOB_EXPORT ClassIntf : public InterfaceOf<ClassIntf, TypeIntf> {
public:
    enum PropertyId : unsigned {
        IsAbstractId = 1,
        CommentsId = 2,
        SupersId = 3,
        OwnedAttributesId = 4
    };
    static constexpr char const* Name = "QOB.Class";
    static constexpr char const* ImmutableName = "QOB.ImmutableClass";
    static IntrospectiveMethods sIntrospectiveMethods;

    /// Always there; false in a new one.
    virtual void setIsAbstract(Deviant deviant, Boolean const& isAbstract);
    virtual Boolean isAbstract(Deviant deviant) const;

    /// What the class is for, in the words of its metamodel.
    virtual Sequence<String> getComments(Deviant deviant);
    virtual Sequence<String> getCommentsWithoutAssociation(Deviant deviant);
    /// The direct supers, in order.
    virtual Sequence<Class> getSupers(Deviant deviant);
    virtual Sequence<Class> getSupersWithoutAssociation(Deviant deviant);
    /// The properties that the class declares, in order of their ids; inherited ones aren't here.
    virtual Sequence<Property> getOwnedAttributes(Deviant deviant);
    virtual Sequence<Property> getOwnedAttributesWithoutAssociation(Deviant deviant);

    /// Ties the class to the record of its instances: once for the process, whatever the deviant.
    virtual void internal_bind(ClassBinding const& binding);
    virtual ClassBinding internal_binding() const;
    /// The properties of the class and of its supers, by name and by record; up to date.
    virtual QOB::internal::PropertyIndex const& internal_propertyIndex() const;

    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    void internal_assignBlock(Deviant deviant, ClassIntf const* source, Deviant sourceDeviant);
};

} // namespace NSInterface
} // namespace QOB
