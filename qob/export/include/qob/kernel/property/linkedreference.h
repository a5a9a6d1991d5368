#pragma once

#include "qob/kernel/property/otherend.h"
#include "qob/kernel/property/twoended.h"

/// A reference with another end, `End` (otherend.h). The plain forms update both ends; the other
/// end calls the forms with "only", so that the two don't call each other for ever.
namespace QOB::property {

/// In this order: unlink the old value, inform the kernel, change the field, link the new value. An
/// empty value removes the reference.
template <auto Get, auto SetOnly, auto Remove, class End, class Intf, class Handle>
void setLinked(Intf* object,
               Deviant deviant,
               Handle const& value,
               IntrospectiveMethods const& methods,
               unsigned id) {
    setBothEnds<Get, SetOnly, Remove>(
        object, deviant, value, methods, id, [] {}, [&] { End::add(value, deviant, object); });
}

/// Removes the link to the old value at both ends; the caller updates the new value's end.
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
