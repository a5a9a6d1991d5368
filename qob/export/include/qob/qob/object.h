#pragma once

#include "qob/kernel/handle/handle.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/nsinterface/valueobjectintf.h"

#include <string>

namespace QOB {

/// Anything with a kernel identity, for reading: the common currency of generic code.
class ImmutableObject : public ReadHandle<NSInterface::ObjectIntf> {
public:
    using ReadHandle::ReadHandle;

    char const* getLumvoName(bool immutable) const { return (*this)->getLumvoName(immutable); }
    String toString() const { return (*this)->toString(getDeviant()); }
};

/// Anything with a kernel identity.
class Object : public WriteHandle<ImmutableObject> {
public:
    using WriteHandle::WriteHandle;

    void destroy() const { (*this)->destroy(getDeviant()); }
};

/// A boxed value.
class ImmutableValueObject : public ReadHandle<NSInterface::ValueObjectIntf> {
public:
    using ReadHandle::ReadHandle;

    void getValue(Tessel::any& value) const { (*this)->getValue(value); }
    std::string getValueTypeName() const { return (*this)->getValueTypeName(); }
};

class ValueObject : public WriteHandle<ImmutableValueObject> {
public:
    using WriteHandle::WriteHandle;
};

/// What every handle on an instance of a metaclass offers for reading; `Base` is a ReadHandle.
template <class Base>
class ClassObjectReading : public Base {
public:
    using Base::Base;

    char const* getLumvoName(bool immutable) const { return (*this)->getLumvoName(immutable); }
    String toString() const { return (*this)->toString(this->getDeviant()); }
    bool hasObjectId() const { return (*this)->hasObjectId(this->getDeviant()); }
    Integer getObjectId() const { return (*this)->getObjectId(this->getDeviant()); }
    bool hasUri() const { return (*this)->hasUri(this->getDeviant()); }
    String getUri() const { return (*this)->getUri(this->getDeviant()); }
    bool hasModelQOB() const { return (*this)->hasModelQOB(this->getDeviant()); }
    /// Needs the header of Model.
    Model getModelQOB() const;
    bool hasContainerQOB() const { return (*this)->hasContainerQOB(this->getDeviant()); }
    ClassObject getContainerQOB() const;
};

/// The same for writing; `Base` is a WriteHandle.
template <class Base>
class ClassObjectWriting : public Base {
public:
    using Base::Base;

    /// Ends the object, with what it contains, in the handle's deviant.
    void destroy() const { (*this)->destroy(this->getDeviant()); }
    void setContainerQOB(ClassObject const& container) const {
        (*this)->setContainerQOB(this->getDeviant(), container);
    }
    void removeContainerQOB() const { (*this)->removeContainerQOB(this->getDeviant()); }
};

/// An instance of a metaclass, for reading.
class ImmutableClassObject : public ClassObjectReading<ReadHandle<NSInterface::ClassObjectIntf>> {
public:
    using ClassObjectReading::ClassObjectReading;
};

/// An instance of a metaclass.
class ClassObject : public ClassObjectWriting<WriteHandle<ImmutableClassObject>> {
public:
    using ClassObjectWriting::ClassObjectWriting;
};

template <class Base>
ClassObject ClassObjectReading<Base>::getContainerQOB() const {
    return (*this)->getContainerQOB(this->getDeviant());
}

} // namespace QOB
