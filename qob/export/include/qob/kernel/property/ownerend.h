#pragma once

#include "qob/kernel/property/container.h"
#include "qob/kernel/property/otherend.h"
#include "qob/kernel/upcast.h"

/// The owner of a collection, seen from an owned object. It has no field of its own: it is the
/// object's container, if that is of the owner's class. `End` is the owner's collection
/// (otherend.h).
namespace QOB::property {

/// For an owner whose collection is only a view of other properties: objects are added to and
/// removed from one of those, together with the container.
struct DerivedOtherEnd {};

/// Works on a state as on the root object.
template <class Owner, class Intf>
Owner getOwner(Intf const* object, Deviant deviant) {
    return Owner(object->getContainerQOB(deviant));
}

/// Replaces `container`, the current one, by another owner. If it is an owner too, its collection
/// loses the object. A part of a rule that has a OneWrite.
template <class End, class Owner, class Intf>
void replaceOwner(Intf* object, Deviant deviant, ClassObject const& container, Owner const& owner) {
    if (Owner const old(container); old.isValid()) {
        End::remove(old, deviant, object);
        replaceContainer(upcast<NSInterface::ClassObjectIntf>(object), deviant, container, owner);
    } else {
        object->setOnlyContainerQOB(deviant, owner);
    }
}

/// Sets both ends. An empty owner removes the property; the current one changes nothing. Raises,
/// before anything changes, if the owner has no list for the object.
template <class End, auto SetOnly, class Owner, class Intf>
void setOwner(Intf* object,
              Deviant deviant,
              Owner const& owner,
              IntrospectiveMethods const& methods,
              unsigned id) {
    bool const isThere = requireSameModel(object, deviant, owner, methods, id);
    ClassObject const container = object->getContainerQOB(deviant);
    if (container.isValid() && container == ClassObject(owner)) {
        return;
    }
    if (!isThere) {
        (object->*SetOnly)(deviant, owner);
    } else if constexpr (std::is_same_v<End, DerivedOtherEnd>) {
        object->setContainerQOB(deviant, owner);
    } else {
        End::requireRoom(owner, deviant, object);
        OneWrite const write;
        replaceOwner<End>(object, deviant, container, owner);
        End::add(owner, deviant, object);
    }
}

/// Removes the link to the old owner at both ends; the caller updates the new owner's end.
template <class End, auto Remove, class Owner, class Intf>
void setOnlyOwner(Intf* object,
                  Deviant deviant,
                  Owner const& owner,
                  IntrospectiveMethods const& methods,
                  unsigned id) {
    if (!requireSameModel(object, deviant, owner, methods, id)) {
        (object->*Remove)(deviant);
    } else if constexpr (std::is_same_v<End, DerivedOtherEnd>) {
        object->setOnlyContainerQOB(deviant, owner);
    } else {
        ClassObject const container = object->getContainerQOB(deviant);
        if (!(container == ClassObject(owner))) {
            OneWrite const write;
            replaceOwner<End>(object, deviant, container, owner);
        }
    }
}

template <class End, class Owner, class Intf>
void removeOwner(Intf* object, Deviant deviant) {
    if constexpr (!std::is_same_v<End, DerivedOtherEnd>) {
        ClassObject const container = object->getContainerQOB(deviant);
        if (Owner const old(container); old.isValid()) {
            OneWrite const write;
            End::remove(old, deviant, object);
            replaceContainer(
                upcast<NSInterface::ClassObjectIntf>(object), deviant, container, ClassObject());
            return;
        }
    }
    object->removeContainerQOB(deviant);
}

} // namespace QOB::property
