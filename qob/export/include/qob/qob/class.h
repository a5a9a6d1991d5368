#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/nsinterface/classintf.h"
#include "qob/qob/type.h"

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
    Sequence<Class> getSupers() const { return (*this)->getSupers(getDeviant()); }
    Sequence<Property> getOwnedAttributes() const;
};

// Read only, through views that could write.
inline ImmutableSequence<String> ImmutableClass::getComments() const {
    return ImmutableSequence<String>(
        access(__FILE__, __LINE__)->getCommentsWithoutAssociation(getDeviant()));
}
inline ImmutableSequence<ImmutableClass> ImmutableClass::getSupers() const {
    return ImmutableSequence<ImmutableClass>(
        access(__FILE__, __LINE__)->getSupersWithoutAssociation(getDeviant()));
}

template <class Base>
ImmutableClass ClassObjectReading<Base>::getMetaClass() const {
    return (*this)->getMetaClass(this->getDeviant());
}

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::Class, "QOB.", "Class")

#include "qob/qob/property.h" // IWYU pragma: keep
