#pragma once

#include "qob/kernel/property/reference.h"

/// A reference that is also an element of a wider property of the same object, which has another
/// end. Each set brings its value into the wider property, also if it refers to the value already;
/// a removal from either of the two doesn't change the other.
namespace QOB::property {

/// First adds the value to the wider property `GetMany`, at both ends: if that raises, the
/// reference doesn't change. A value that is already there is found without a view; its other end,
/// written by `SetOnlyFar`, may still refer to another object.
template <auto Get, auto Set, auto Remove, auto GetMany, auto SetOnlyFar, class Intf, class Handle>
void setSubsetting(Intf* object,
                   Deviant deviant,
                   Handle const& value,
                   IntrospectiveMethods const& methods,
                   unsigned id) {
    OneWrite const write;
    if (value.isValid()) {
        auto* const state = const_cast<Intf*>(readState(object, deviant));
        if ((state->*GetMany)(deviant).contains(value)) {
            (value.get()->*SetOnlyFar)(deviant, object->This(deviant));
        } else {
            (object->*GetMany)(deviant).push_back(value);
        }
    }
    setReference<Get, Set, Remove>(object, deviant, value, methods, id);
}

} // namespace QOB::property
