#pragma once

#include "qob/kernel/handle/handle.h"
#include "qob/qob/externaltoolinfo.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/nsinterface/valueobjectintf.h"

#include <string>
#include <typeinfo>
#include <utility>

namespace QOB {
class ImmutableObject;
class Object;
class ImmutableValueObject;
class ValueObject;
class ImmutableClassObject;
class ClassObject;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::ObjectIntf,
            QOB::ImmutableObject,
            QOB::Object,
            "qob/export/include/qob/qob/object.h")
QOB_HANDLES(QOB::NSInterface::ValueObjectIntf,
            QOB::ImmutableValueObject,
            QOB::ValueObject,
            "qob/export/include/qob/qob/object.h")
QOB_HANDLES(QOB::NSInterface::ClassObjectIntf,
            QOB::ImmutableClassObject,
            QOB::ClassObject,
            "qob/export/include/qob/qob/object.h")

namespace QOB {

/// What every handle offers for reading; `Base` is a ReadHandle. A handle has every operation of
/// its interface class, documented there, and calls it in the handle's deviant.
template <class Base>
class ObjectReading : public Base {
public:
    using Base::Base;

    /// The same object seen in another deviant of its model. A deviant of another model, and null,
    /// stand for the object's root; one that has been removed stays, and every access raises.
    typename HandlesOf<typename Base::Interface>::Reading inDeviant(Deviant deviant) const {
        return {ofClass, this->access(), deviant};
    }

    bool deviant_isValid() const { return (*this)->deviant_isValid(this->getDeviant()); }
    Deviant getRootDeviant() const { return (*this)->getRootDeviant(); }
    char const* getLumvoName(bool immutable) const { return (*this)->getLumvoName(immutable); }
    String toString() const { return (*this)->toString(this->getDeviant()); }
    /// Needs the header of Type.
    ImmutableType getMetaType() const;

    /// The state that a read or a write uses, as interface class `Level`.
    template <class Level>
    Level* getReadDeviantI(Level const* tag) const {
        return (*this)->getReadDeviantI(this->getDeviant(), tag);
    }
    template <class Level>
    Level* getWriteDeviantI(Level const* tag) const {
        return (*this)->getWriteDeviantI(this->getDeviant(), tag);
    }
};

/// The same for writing; `Base` is a WriteHandle. The operations on states are for the kernel,
/// which tracks who owns a state.
template <class Base>
class ObjectWriting : public Base {
    using ObjectIntf = NSInterface::ObjectIntf;

public:
    using Base::Base;

    /// The same object seen in another deviant of its model, as for reading.
    typename HandlesOf<typename Base::Interface>::Writing inDeviant(Deviant deviant) const {
        return {ofClass, this->access(), deviant};
    }

    void internal_disconnect() const { (*this)->internal_disconnect(this->getDeviant()); }
    void internal_discard(bool detach) const {
        (*this)->internal_discard(this->getDeviant(), detach);
    }
    /// Destroys the object and its contents in the handle's deviant.
    void destroy() const { (*this)->destroy(this->getDeviant()); }
    void deviant_destroyState(ObjectIntf* state) const { (*this)->deviant_destroyState(state); }
    void deviant_markModelDestroyed() const { (*this)->deviant_markModelDestroyed(); }
    void deviant_commitTransientState() const {
        (*this)->deviant_commitTransientState(this->getDeviant());
    }
    ObjectIntf* deviant_getCopyOfDeviation() const {
        return (*this)->deviant_getCopyOfDeviation(this->getDeviant());
    }
    ObjectIntf* internal_getDeviation() const {
        return (*this)->internal_getDeviation(this->getDeviant());
    }
    void internal_setDeviation(ObjectIntf* state) const {
        (*this)->internal_setDeviation(this->getDeviant(), state);
    }
    ObjectIntf* internal_createDeviation() const {
        return (*this)->internal_createDeviation(this->getDeviant());
    }
    void internal_destroyDeviation() const {
        (*this)->internal_destroyDeviation(this->getDeviant());
    }
    void internal_deviationAssign(ObjectIntf* source, Deviant sourceDeviant) const {
        (*this)->internal_deviationAssign(this->getDeviant(), source, sourceDeviant);
    }
    ImmutableObject convertFromString(String text) const;
};

/// Anything with a kernel identity, for reading: the type that generic code passes around.
class ImmutableObject : public ObjectReading<ReadHandle<NSInterface::ObjectIntf>> {
public:
    using ObjectReading::ObjectReading;
};

/// Anything with a kernel identity.
class Object : public ObjectWriting<WriteHandle<ImmutableObject>> {
public:
    using ObjectWriting::ObjectWriting;
};

template <class Base>
ImmutableObject ObjectWriting<Base>::convertFromString(String text) const {
    return (*this)->convertFromString(this->getDeviant(), std::move(text));
}

/// A boxed value.
class ImmutableValueObject : public ObjectReading<ReadHandle<NSInterface::ValueObjectIntf>> {
public:
    using ObjectReading::ObjectReading;

    void getValue(Tessel::any& value) const { (*this)->getValue(value); }
    std::string getValueTypeName() const { return (*this)->getValueTypeName(); }
    void const* findValue(std::type_info const& type) const { return (*this)->findValue(type); }
};

class ValueObject : public ObjectWriting<WriteHandle<ImmutableValueObject>> {
public:
    using ObjectWriting::ObjectWriting;
};

/// What every handle on an instance of a metaclass offers for reading; `Base` is a ReadHandle.
template <class Base>
class ClassObjectReading : public ObjectReading<Base> {
public:
    using ObjectReading<Base>::ObjectReading;

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
    /// Needs the header of Sequence, like all members that return one.
    ImmutableSequence<ImmutableClassObject> getContaineeQOBs() const;
    ImmutableSequence<ImmutableClassObject> getContaineeQOBsWithoutAssociation() const;
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
class ClassObjectWriting : public ObjectWriting<Base> {
public:
    using ObjectWriting<Base>::ObjectWriting;

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
    void removeObjectId() const { (*this)->removeObjectId(this->getDeviant()); }
    void setObjectId(Integer const& id) const { (*this)->setObjectId(this->getDeviant(), id); }
    Sequence<ClassObject> getContaineeQOBs() const;
    Sequence<ClassObject> getContaineeQOBsWithoutAssociation() const;
    void removeUri() const { (*this)->removeUri(this->getDeviant()); }
    void setUri(String const& uri) const { (*this)->setUri(this->getDeviant(), uri); }
    /// Need the header of StereotypeObject.
    Sequence<StereotypeObject> getAppliedStereotypeInstances() const;
    Sequence<StereotypeObject> getAppliedStereotypeInstancesWithoutAssociation() const;
    void removeModelQOB() const { (*this)->removeModelQOB(this->getDeviant()); }
    void setModelQOB(Model const& model) const { (*this)->setModelQOB(this->getDeviant(), model); }
    void removeOnlyModelQOB() const { (*this)->removeOnlyModelQOB(this->getDeviant()); }
    void setOnlyModelQOB(Model const& model) const {
        (*this)->setOnlyModelQOB(this->getDeviant(), model);
    }
    void removeContainerQOB() const { (*this)->removeContainerQOB(this->getDeviant()); }
    void setContainerQOB(ClassObject const& container) const {
        (*this)->setContainerQOB(this->getDeviant(), container);
    }
    void removeOnlyContainerQOB() const { (*this)->removeOnlyContainerQOB(this->getDeviant()); }
    void setOnlyContainerQOB(ClassObject const& container) const {
        (*this)->setOnlyContainerQOB(this->getDeviant(), container);
    }
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
