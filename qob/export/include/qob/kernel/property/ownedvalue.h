#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/property/container.h"
#include "qob/kernel/property/twoended.h"

/// A single owned object: a reference in the owner, with the owner as the object's container.
namespace QOB::property {

/// Whether the object is the container of the value.
template <class Intf, class Handle>
bool isContainerOf(Intf* object, Deviant deviant, Handle const& value) {
    ClassObject const container = value->getContainerQOB(deviant);
    return container.isValid() && container == ClassObject(object->This(deviant));
}

/// Removes the object as the container of a value that it no longer owns, if there is one.
template <class Intf, class Handle>
void releaseOwned(Intf* object, Deviant deviant, Handle const& value) {
    if (value.isValid() && isContainerOf(object, deviant, value)) {
        value->removeOnlyContainerQOB(deviant);
    }
}

/// An empty value removes the property. The new value leaves its previous container, which may be
/// another property of the same object.
template <auto Get, auto Set, auto Remove, class Intf, class Handle>
void setOwnedValue(Intf* object,
                   Deviant deviant,
                   Handle const& value,
                   IntrospectiveMethods const& methods,
                   unsigned id) {
    auto const leave = [&](auto const& old) {
        if (isContainerOf(object, deviant, value)) {
            leaveContainer(castObject<NSInterface::ClassObjectIntf>(value.get()),
                           deviant,
                           ClassObject(object->This(deviant)));
        }
        releaseOwned(object, deviant, old);
    };
    setBothEnds<Get, Set, Remove>(object, deviant, value, methods, id, leave, [&] {
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
template <auto Get, auto Set, class Intf>
void removeOwnedValue(Intf* object,
                      Deviant deviant,
                      IntrospectiveMethods const& methods,
                      unsigned id) {
    removeBothEnds<Get, Set>(object, deviant, methods, id, [&](auto const& old) {
        if (old.isValid()) {
            releaseOwned(object, deviant, old);
            object->getContaineeQOBs(deviant).removeAll(ClassObject(old));
        }
    });
}

} // namespace QOB::property
