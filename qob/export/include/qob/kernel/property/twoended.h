#pragma once

#include "qob/kernel/property/reference.h"

/// The order of steps in setting a reference whose value also stores something about the owner. The
/// old value is read once, and the model is checked once.
namespace QOB::property {

/// Calls `leave` with the old value before the field changes and `join` after it. An invalid value
/// removes the reference; the current one changes nothing.
template <auto Get, auto Set, auto Remove, class Intf, class Handle, class Leave, class Join>
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
    auto const old = (readState(object, deviant)->*Get)(deviant);
    if (old == value) {
        return;
    }
    OneWrite const write;
    leave(old);
    replaceReference<Set>(object, deviant, old, value, methods, id);
    join();
}

/// Calls `leave` with the old value; the caller updates the new one. An invalid value removes the
/// reference.
template <auto Get, auto Set, class Intf, class Handle, class Leave>
void setNearEnd(Intf* object,
                Deviant deviant,
                Handle const& value,
                IntrospectiveMethods const& methods,
                unsigned id,
                Leave const& leave) {
    bool const isThere = requireSameModel(object, deviant, value, methods, id);
    auto const old = (readState(object, deviant)->*Get)(deviant);
    if (isThere ? old == value : old.get() == nullptr) {
        return;
    }
    OneWrite const write;
    leave(old);
    if (isThere) {
        replaceReference<Set>(object, deviant, old, value, methods, id);
    } else {
        replaceReference<Set>(object, deviant, old, decltype(old)(), methods, id);
    }
}

/// Calls `leave` with the old value once the field is empty. Does nothing if it was empty.
template <auto Get, auto Set, class Intf, class Leave>
void removeBothEnds(Intf* object,
                    Deviant deviant,
                    IntrospectiveMethods const& methods,
                    unsigned id,
                    Leave const& leave) {
    auto const old = (readState(object, deviant)->*Get)(deviant);
    if (old.get() != nullptr) {
        OneWrite const write;
        replaceReference<Set>(object, deviant, old, decltype(old)(), methods, id);
        leave(old);
    }
}

} // namespace QOB::property
