#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/nsinterface/valueobjectintf.h"
#include "qob/qob/refbase.h"

#include <string>

namespace QOB {

/// Anything with a kernel identity, for reading: the common currency of generic code.
class ImmutableObject : public RefBase<NSInterface::ObjectIntf*> {
public:
    ImmutableObject() noexcept = default;
    ImmutableObject(NSInterface::ObjectIntf const* object, Deviant deviant)
        : RefBase(object, deviant) {}

    NSInterface::ObjectIntf const* get() const noexcept { return RefBase::get(); }
    NSInterface::ObjectIntf const* operator->() const { return access(__FILE__, __LINE__); }

    char const* getLumvoName(bool immutable) const { return (*this)->getLumvoName(immutable); }
    String toString() const { return (*this)->toString(getDeviant()); }
};

/// Anything with a kernel identity.
class Object : public ImmutableObject {
public:
    Object() noexcept = default;
    Object(NSInterface::ObjectIntf* object, Deviant deviant) : ImmutableObject(object, deviant) {}

    NSInterface::ObjectIntf* get() const noexcept { return RefBase::get(); }
    NSInterface::ObjectIntf* operator->() const { return access(__FILE__, __LINE__); }

    void destroy() const { (*this)->destroy(getDeviant()); }
};

/// A boxed value.
class ImmutableValueObject : public RefBase<NSInterface::ValueObjectIntf*> {
public:
    ImmutableValueObject() noexcept = default;
    ImmutableValueObject(NSInterface::ValueObjectIntf const* object, Deviant deviant)
        : RefBase(object, deviant) {}
    /// Empty if the object is no boxed value.
    explicit ImmutableValueObject(ImmutableObject const& object)
        : RefBase(castObject<NSInterface::ValueObjectIntf>(object.get()), object.getDeviant()) {}

    NSInterface::ValueObjectIntf const* get() const noexcept { return RefBase::get(); }
    NSInterface::ValueObjectIntf const* operator->() const { return access(__FILE__, __LINE__); }
    operator ImmutableObject() const { return {get(), getDeviant()}; }

    void getValue(Tessel::any& value) const { (*this)->getValue(value); }
    std::string getValueTypeName() const { return (*this)->getValueTypeName(); }
};

class ValueObject : public ImmutableValueObject {
public:
    ValueObject() noexcept = default;
    ValueObject(NSInterface::ValueObjectIntf* object, Deviant deviant)
        : ImmutableValueObject(object, deviant) {}
    explicit ValueObject(Object const& object) : ImmutableValueObject(object) {}

    NSInterface::ValueObjectIntf* get() const noexcept { return RefBase::get(); }
    NSInterface::ValueObjectIntf* operator->() const { return access(__FILE__, __LINE__); }
    operator Object() const { return {get(), getDeviant()}; }
};

/// An instance of a metaclass, for reading.
class ImmutableClassObject : public RefBase<NSInterface::ClassObjectIntf*> {
public:
    ImmutableClassObject() noexcept = default;
    ImmutableClassObject(NSInterface::ClassObjectIntf const* object, Deviant deviant)
        : RefBase(object, deviant) {}
    /// Empty if the object is no instance of a metaclass.
    explicit ImmutableClassObject(ImmutableObject const& object)
        : RefBase(castObject<NSInterface::ClassObjectIntf>(object.get()), object.getDeviant()) {}

    NSInterface::ClassObjectIntf const* get() const noexcept { return RefBase::get(); }
    NSInterface::ClassObjectIntf const* operator->() const { return access(__FILE__, __LINE__); }
    operator ImmutableObject() const { return {get(), getDeviant()}; }

    char const* getLumvoName(bool immutable) const { return (*this)->getLumvoName(immutable); }
    String toString() const { return (*this)->toString(getDeviant()); }
    bool hasObjectId() const { return (*this)->hasObjectId(getDeviant()); }
    Integer getObjectId() const { return (*this)->getObjectId(getDeviant()); }
    bool hasUri() const { return (*this)->hasUri(getDeviant()); }
    String getUri() const { return (*this)->getUri(getDeviant()); }
    bool hasModelQOB() const { return (*this)->hasModelQOB(getDeviant()); }
    inline Model getModelQOB() const;
    bool hasContainerQOB() const { return (*this)->hasContainerQOB(getDeviant()); }
    inline ClassObject getContainerQOB() const;
};

/// An instance of a metaclass.
class ClassObject : public ImmutableClassObject {
public:
    ClassObject() noexcept = default;
    ClassObject(NSInterface::ClassObjectIntf* object, Deviant deviant)
        : ImmutableClassObject(object, deviant) {}
    explicit ClassObject(Object const& object) : ImmutableClassObject(object) {}

    NSInterface::ClassObjectIntf* get() const noexcept { return RefBase::get(); }
    NSInterface::ClassObjectIntf* operator->() const { return access(__FILE__, __LINE__); }
    operator Object() const { return {get(), getDeviant()}; }

    void destroy() const { (*this)->destroy(getDeviant()); }
    void setContainerQOB(ClassObject const& container) const {
        (*this)->setContainerQOB(getDeviant(), container);
    }
    void removeContainerQOB() const { (*this)->removeContainerQOB(getDeviant()); }
};

inline ClassObject ImmutableClassObject::getContainerQOB() const {
    return (*this)->getContainerQOB(getDeviant());
}

} // namespace QOB

template <>
struct std::hash<QOB::Object> : QOB::HandleHash<QOB::Object> {};
template <>
struct std::hash<QOB::ImmutableObject> : QOB::HandleHash<QOB::ImmutableObject> {};
template <>
struct std::hash<QOB::ClassObject> : QOB::HandleHash<QOB::ClassObject> {};
template <>
struct std::hash<QOB::ImmutableClassObject> : QOB::HandleHash<QOB::ImmutableClassObject> {};
