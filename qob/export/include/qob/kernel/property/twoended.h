#pragma once

#include "qob/kernel/property/reference.h"

/// The order in which a reference is set whose value holds something about the owner too.
namespace QOB::property {

/// `leave` is called before the field changes, `join` after it. An invalid value is a removal, the
/// present one changes nothing.
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

/// `release` is called with the old value; what the new one holds is left to the caller. An invalid
/// value is a removal.
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
