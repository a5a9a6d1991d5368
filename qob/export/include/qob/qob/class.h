#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/nsinterface/classintf.h"
#include "qob/qob/type.h"

namespace QOB {
class ImmutableClass;
class Class;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::ClassIntf,
            QOB::ImmutableClass,
            QOB::Class,
            "qob/export/include/qob/qob/class.h")

namespace QOB {

class ImmutableProperty;

/// A metaclass, for reading.
class ImmutableClass : public TypeReading<ReadHandle<NSInterface::ClassIntf>> {
public:
    using TypeReading::TypeReading;

    Boolean isAbstract() const { return (*this)->isAbstract(getDeviant()); }
    ImmutableSequence<String> getComments() const;
    ImmutableSequence<ImmutableClass> getSupers() const;
    ImmutableSequence<ImmutableProperty> getOwnedAttributes() const;
    ClassBinding internal_binding() const { return (*this)->internal_binding(); }
    internal::PropertyIndex const& internal_propertyIndex() const {
        return (*this)->internal_propertyIndex();
    }
};

/// A metaclass.
class Class : public TypeWriting<WriteHandle<ImmutableClass>> {
public:
    using TypeWriting::TypeWriting;

    /// A new class in the model and in the deviant of its handle, with the next free id.
    static QOB_EXPORT Class create(Model const& model);
    static QOB_EXPORT Class create(Model const& model, String const& name);
    /// With an id that the caller gives.
    static QOB_EXPORT Class createWithId(Model const& model, Integer const& id);

    void setIsAbstract(Boolean const& isAbstract) const {
        (*this)->setIsAbstract(getDeviant(), isAbstract);
    }
    Sequence<String> getComments() const { return (*this)->getComments(getDeviant()); }
    Sequence<String> getCommentsWithoutAssociation() const {
        return (*this)->getCommentsWithoutAssociation(getDeviant());
    }
    Sequence<Class> getSupers() const { return (*this)->getSupers(getDeviant()); }
    Sequence<Class> getSupersWithoutAssociation() const {
        return (*this)->getSupersWithoutAssociation(getDeviant());
    }
    Sequence<Property> getOwnedAttributes() const;
    Sequence<Property> getOwnedAttributesWithoutAssociation() const;
    void internal_bind(ClassBinding const& binding) const { (*this)->internal_bind(binding); }
};

// Read only, through views that could write.
inline ImmutableSequence<String> ImmutableClass::getComments() const {
    return access()->getCommentsWithoutAssociation(getDeviant());
}
inline ImmutableSequence<ImmutableClass> ImmutableClass::getSupers() const {
    return access()->getSupersWithoutAssociation(getDeviant());
}

template <class Base>
ImmutableClass ClassObjectReading<Base>::getMetaClass() const {
    return (*this)->getMetaClass(this->getDeviant());
}

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::Class, "QOB.", "Class")

#include "qob/qob/property.h" // IWYU pragma: keep
