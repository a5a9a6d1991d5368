#pragma once

#include "qob/kernel/property/otherend.h"
#include "qob/kernel/property/twoended.h"

/// A reference with another end, `End` (otherend.h). The plain forms update both ends; the other
/// end calls the forms with "only", so that the two don't call each other for ever.
namespace QOB::property {

/// Unlinks the object from its old value, if there is one.
template <class End, class Intf>
auto leavingLinked(Intf* object, Deviant deviant) {
    return [object, deviant](auto const& old) {
        if (old.isValid()) {
            End::remove(old, deviant, object);
        }
    };
}

/// In this order: unlink the old value, inform the kernel, change the field, link the new value. An
/// empty value removes the reference.
template <auto Get, auto Set, auto Remove, class End, class Intf, class Handle>
void setLinked(Intf* object,
               Deviant deviant,
               Handle const& value,
               IntrospectiveMethods const& methods,
               unsigned id) {
    setBothEnds<Get, Set, Remove>(
        object, deviant, value, methods, id, leavingLinked<End>(object, deviant), [&] {
            End::add(value, deviant, object);
        });
}

/// Removes the link to the old value at both ends; the caller updates the new value's end.
template <auto Get, auto Set, class End, class Intf, class Handle>
void setOnlyLinked(Intf* object,
                   Deviant deviant,
                   Handle const& value,
                   IntrospectiveMethods const& methods,
                   unsigned id) {
    setNearEnd<Get, Set>(object, deviant, value, methods, id, leavingLinked<End>(object, deviant));
}

template <auto Get, auto Set, class End, class Intf>
void removeLinked(Intf* object, Deviant deviant, IntrospectiveMethods const& methods, unsigned id) {
    removeBothEnds<Get, Set>(object, deviant, methods, id, leavingLinked<End>(object, deviant));
}

} // namespace QOB::property
