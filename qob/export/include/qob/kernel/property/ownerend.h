#pragma once

#include "qob/kernel/property/reference.h"
#include "qob/qob/object.h"

/// The owner of an owned collection, seen from what is owned: it has no field of its own, it is the
/// container, where that is of the owner's class. `Elements` names the owner's operation that gives
/// its end without upkeep.
namespace QOB::property {

/// Works on a state as on the root object.
template <class Owner, class Intf>
Owner getOwner(Intf const* object, Deviant deviant) {
    return Owner(object->getContainerQOB(deviant));
}

/// The end of the owner, and this object as one of its elements.
template <auto Elements, class Owner>
auto elementsOf(Owner const& owner, Deviant deviant) {
    return (owner.get()->*Elements)(deviant);
}

template <auto Elements, class Owner, class Intf>
void leaveOwner(Intf* object, Deviant deviant, Owner const& owner) {
    auto const elements = elementsOf<Elements>(owner, deviant);
    using Element = typename decltype(elements)::value_type;
    elements.removeAll(Element(object, deviant));
}

/// Both ends; an empty owner is a removal. A repetition adds nothing a second time.
template <auto Elements, auto SetOnly, class Owner, class Intf>
void setOwner(Intf* object,
              Deviant deviant,
              Owner const& owner,
              IntrospectiveMethods const& methods,
              unsigned id) {
    requireSameModel(deviant, owner, methods, id);
    ClassObject const container = object->getContainerQOB(deviant);
    if (container.isValid() && container == ClassObject(owner)) {
        return;
    }
    (object->*SetOnly)(deviant, owner);
    if (owner.isValid()) {
        auto const elements = elementsOf<Elements>(owner, deviant);
        using Element = typename decltype(elements)::value_type;
        elements.push_back(Element(object, deviant));
    }
}

/// Cuts the link to the old owner at both ends; what the new owner has is left to the caller.
template <auto Elements, auto Remove, class Owner, class Intf>
void setOnlyOwner(Intf* object,
                  Deviant deviant,
                  Owner const& owner,
                  IntrospectiveMethods const& methods,
                  unsigned id) {
    requireSameModel(deviant, owner, methods, id);
    if (!owner.isValid()) {
        (object->*Remove)(deviant);
        return;
    }
    Owner const old = getOwner<Owner>(object, deviant);
    if (old.isValid()) {
        if (old == owner) {
            return;
        }
        leaveOwner<Elements>(object, deviant, old);
    }
    object->setOnlyContainerQOB(deviant, owner);
}

template <auto Elements, class Owner, class Intf>
void removeOwner(Intf* object, Deviant deviant) {
    Owner const old = getOwner<Owner>(object, deviant);
    if (old.isValid()) {
        leaveOwner<Elements>(object, deviant, old);
    }
    object->removeOnlyContainerQOB(deviant);
}

} // namespace QOB::property
