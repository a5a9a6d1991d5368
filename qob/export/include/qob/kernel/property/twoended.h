#pragma once

#include "qob/kernel/property/reference.h"

/// The order of steps in setting a reference whose value also stores something about the owner.
namespace QOB::property {

/// Calls `leave` before the field changes and `join` after it. An invalid value removes the
/// reference; the current one changes nothing.
template <auto Get, auto SetOnly, auto Remove, class Intf, class Handle, class Leave, class Join>
void setBothEnds(Intf* object,
                 Deviant deviant,
                 Handle const& value,
                 IntrospectiveMethods const& methods,
                 unsigned id,
                 Leave const& leave,
                 Join const& join) {
    if (!requireSameModel(object, deviant, value, methods, id)) {
        (object->*Remove)(deviant);
        return;
    }
    if ((readState(object, deviant)->*Get)(deviant) == value) {
        return;
    }
    leave();
    (object->*SetOnly)(deviant, value);
    join();
}

/// Calls `release` with the old value; the caller updates the new one. An invalid value removes the
/// reference.
template <auto Get, auto Set, class Intf, class Handle, class Release>
void setNearEnd(Intf* object,
                Deviant deviant,
                Handle const& value,
                IntrospectiveMethods const& methods,
                unsigned id,
                Release const& release) {
    bool const isThere = requireSameModel(object, deviant, value, methods, id);
    auto const old = (readState(object, deviant)->*Get)(deviant);
    if (isThere && old == value) {
        return;
    }
    if (old.isValid()) {
        release(old);
    }
    if (isThere) {
        storeReference<Get, Set>(object, deviant, value, methods, id);
    } else {
        removeOnlyReference<Get, Set>(object, deviant, methods, id);
    }
}

} // namespace QOB::property
