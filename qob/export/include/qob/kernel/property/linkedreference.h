#pragma once

#include "qob/kernel/property/otherend.h"
#include "qob/kernel/property/twoended.h"

/// A reference whose value knows who refers to it: `End` is the other end (otherend.h). The plain
/// forms keep both ends in step; the other end calls the forms with "only", so that the two don't
/// call each other for ever.
namespace QOB::property {

/// Order: the old value loses this object, the kernel is told, the field changes, and only then the
/// new value gains this object. An empty value is a removal.
template <auto Get, auto SetOnly, auto Remove, class End, class Intf, class Handle>
void setLinked(Intf* object,
               Deviant deviant,
               Handle const& value,
               IntrospectiveMethods const& methods,
               unsigned id) {
    setBothEnds<Get, SetOnly, Remove>(
        object, deviant, value, methods, id, [] {}, [&] { End::add(value, deviant, object); });
}

/// Cuts the link to the old value at both ends; what the new value holds is left to the caller.
template <auto Get, auto Set, class End, class Intf, class Handle>
void setOnlyLinked(Intf* object,
                   Deviant deviant,
                   Handle const& value,
                   IntrospectiveMethods const& methods,
                   unsigned id) {
    setNearEnd<Get, Set>(object, deviant, value, methods, id, [&](auto const& old) {
        End::remove(old, deviant, object);
    });
}

template <auto Get, auto RemoveOnly, class End, class Intf>
void removeLinked(Intf* object, Deviant deviant) {
    auto const old = (readState(object, deviant)->*Get)(deviant);
    (object->*RemoveOnly)(deviant);
    if (old.isValid()) {
        End::remove(old, deviant, object);
    }
}

} // namespace QOB::property
