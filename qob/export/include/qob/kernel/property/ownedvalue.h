#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/property/container.h"
#include "qob/kernel/property/twoended.h"

/// A single owned object: a reference in the owner, with the owner as the object's container.
namespace QOB::property {

/// Removes the object as the container of a value that it no longer owns.
template <class Intf, class Handle>
void releaseOwned(Intf* object, Deviant deviant, Handle const& value) {
    ClassObject const container = value->getContainerQOB(deviant);
    if (container.isValid() && container == ClassObject(object->This(deviant))) {
        value->removeOnlyContainerQOB(deviant);
    }
}

/// An empty value removes the property. The new value leaves its previous container, which may be
/// another property of the same object.
template <auto Get, auto SetOnly, auto Remove, class Intf, class Handle>
void setOwnedValue(Intf* object,
                   Deviant deviant,
                   Handle const& value,
                   IntrospectiveMethods const& methods,
                   unsigned id) {
    auto const leave = [&] {
        ClassObject const container = value->getContainerQOB(deviant);
        if (container.isValid() && container == ClassObject(object->This(deviant))) {
            leaveContainer(
                castObject<NSInterface::ClassObjectIntf>(value.get()), deviant, container);
        }
    };
    setBothEnds<Get, SetOnly, Remove>(object, deviant, value, methods, id, leave, [&] {
        value->setOnlyContainerQOB(deviant, ClassObject(object->This(deviant)));
    });
}

/// Releases the old value; the caller updates the container of the new one.
template <auto Get, auto Set, class Intf, class Handle>
void setOnlyOwnedValue(Intf* object,
                       Deviant deviant,
                       Handle const& value,
                       IntrospectiveMethods const& methods,
                       unsigned id) {
    setNearEnd<Get, Set>(object, deviant, value, methods, id, [&](auto const& old) {
        releaseOwned(object, deviant, old);
    });
}

/// The value also leaves every other property by which the object contains it.
template <auto Get, auto RemoveOnly, class Intf>
void removeOwnedValue(Intf* object, Deviant deviant) {
    auto const old = (readState(object, deviant)->*Get)(deviant);
    (object->*RemoveOnly)(deviant);
    if (old.isValid()) {
        releaseOwned(object, deviant, old);
        object->getContaineeQOBs(deviant).removeAll(ClassObject(old));
    }
}

} // namespace QOB::property
