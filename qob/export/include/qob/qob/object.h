#pragma once

#include "qob/kernel/handle/handle.h"
#include "qob/qob/externaltoolinfo.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/nsinterface/valueobjectintf.h"

#include <string>
#include <utility>

namespace QOB {

class ImmutableClassObject;

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
    /// Needs the header of Type.
    ImmutableType getMetaType() const;
    /// Needs the header of Class.
    ImmutableClass getMetaClass() const;

    using Base::get;
    // Properties by their live element or by name; those by element need the header of Property,
    // the sequences that of Sequence.
    ImmutableSequence<Object> get(ImmutableProperty const& property) const;
    ImmutableSequence<Object> get(String name) const;
    Object getOne(ImmutableProperty const& property) const {
        return (*this)->getOne(this->getDeviant(), property);
    }
    Object getOne(String name) const {
        return (*this)->getOne(this->getDeviant(), std::move(name));
    }
    bool has(ImmutableProperty const& property) const {
        return (*this)->has(this->getDeviant(), property);
    }
    bool has(String name) const { return (*this)->has(this->getDeviant(), std::move(name)); }

    bool hasObjectId() const { return (*this)->hasObjectId(this->getDeviant()); }
    Integer getObjectId() const { return (*this)->getObjectId(this->getDeviant()); }
    /// Needs the header of Sequence, as all members that give one.
    ImmutableSequence<ImmutableClassObject> getContaineeQOBs() const;
    bool hasUri() const { return (*this)->hasUri(this->getDeviant()); }
    String getUri() const { return (*this)->getUri(this->getDeviant()); }
    bool hasAppliedStereotypeInstances() const {
        return (*this)->hasAppliedStereotypeInstances(this->getDeviant());
    }
    bool hasModelQOB() const { return (*this)->hasModelQOB(this->getDeviant()); }
    /// Needs the header of Model.
    Model getModelQOB() const;
    bool hasContainerQOB() const { return (*this)->hasContainerQOB(this->getDeviant()); }
    ClassObject getContainerQOB() const;
    bool hasRootModel() const { return (*this)->hasRootModel(this->getDeviant()); }
    /// Needs the header of Model.
    Model getRootModel() const;
    bool hasExternalId() const { return (*this)->hasExternalId(this->getDeviant()); }
    String getExternalId() const { return (*this)->getExternalId(this->getDeviant()); }
    bool hasExternalToolInfos() const { return (*this)->hasExternalToolInfos(this->getDeviant()); }
    ExternalToolInfo getExternalToolInfo(String key) const {
        return (*this)->getExternalToolInfo(this->getDeviant(), std::move(key));
    }
};

/// The same for writing; `Base` is a WriteHandle.
template <class Base>
class ClassObjectWriting : public Base {
public:
    using Base::Base;

    /// Ends the object, with what it contains, in the handle's deviant.
    void destroy() const { (*this)->destroy(this->getDeviant()); }
    void setOrAdd(ImmutableProperty const& property, Object value) const {
        (*this)->setOrAdd(this->getDeviant(), property, std::move(value));
    }
    void setOrAdd(String name, Object value) const {
        (*this)->setOrAdd(this->getDeviant(), std::move(name), std::move(value));
    }
    void setOrAddOnly(ImmutableProperty const& property, Object value) const {
        (*this)->setOrAddOnly(this->getDeviant(), property, std::move(value));
    }
    void setOrAddOnly(String name, Object value) const {
        (*this)->setOrAddOnly(this->getDeviant(), std::move(name), std::move(value));
    }
    void remove(ImmutableProperty const& property) const {
        (*this)->remove(this->getDeviant(), property);
    }
    void remove(String name) const { (*this)->remove(this->getDeviant(), std::move(name)); }
    void remove(ImmutableProperty const& property, Object value) const {
        (*this)->remove(this->getDeviant(), property, std::move(value));
    }
    void remove(String name, Object value) const {
        (*this)->remove(this->getDeviant(), std::move(name), std::move(value));
    }
    void removeOnly(ImmutableProperty const& property, Object value) const {
        (*this)->removeOnly(this->getDeviant(), property, std::move(value));
    }
    void removeOnly(String name, Object value) const {
        (*this)->removeOnly(this->getDeviant(), std::move(name), std::move(value));
    }
    void removeOne(ImmutableProperty const& property) const {
        (*this)->removeOne(this->getDeviant(), property);
    }
    void removeOne(String name) const { (*this)->removeOne(this->getDeviant(), std::move(name)); }
    void removeOneOnly(ImmutableProperty const& property) const {
        (*this)->removeOneOnly(this->getDeviant(), property);
    }
    void removeOneOnly(String name) const {
        (*this)->removeOneOnly(this->getDeviant(), std::move(name));
    }
    Sequence<ClassObject> getContaineeQOBs() const;
    Sequence<ClassObject> getContaineeQOBsWithoutAssociation() const;
    /// Need the header of StereotypeObject.
    Sequence<StereotypeObject> getAppliedStereotypeInstances() const;
    Sequence<StereotypeObject> getAppliedStereotypeInstancesWithoutAssociation() const;
    void setContainerQOB(ClassObject const& container) const {
        (*this)->setContainerQOB(this->getDeviant(), container);
    }
    void removeContainerQOB() const { (*this)->removeContainerQOB(this->getDeviant()); }
    void removeRootModel() const { (*this)->removeRootModel(this->getDeviant()); }
    void removeOnlyRootModel() const { (*this)->removeOnlyRootModel(this->getDeviant()); }
    void removeExternalId() const { (*this)->removeExternalId(this->getDeviant()); }
    void setExternalId(String const& id) const { (*this)->setExternalId(this->getDeviant(), id); }
    void setExternalToolInfo(ExternalToolInfo info) const {
        (*this)->setExternalToolInfo(this->getDeviant(), std::move(info));
    }
    void removeExternalToolInfo(ExternalToolInfo info) const {
        (*this)->removeExternalToolInfo(this->getDeviant(), std::move(info));
    }
    Sequence<ExternalToolInfo> getExternalToolInfos() const;
    Sequence<ExternalToolInfo> getExternalToolInfosWithoutAssociation() const;
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
