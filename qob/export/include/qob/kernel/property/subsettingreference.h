#pragma once

#include "qob/kernel/property/reference.h"

/// A reference that is also an element of a wider property of the same object, one with an other
/// end: who is referred to belongs to the wider property too.
namespace QOB::property {

/// The value joins the wider property `GetMany` first, with its other end: a refusal there leaves
/// the reference as it was. One that is there already is found without a view; its other end,
/// written by `SetOnlyFar`, may still be elsewhere. A removal leaves the wider property alone.
template <auto Get, auto Set, auto Remove, auto GetMany, auto SetOnlyFar, class Intf, class Handle>
void setSubsetting(Intf* object,
                   Deviant deviant,
                   Handle const& value,
                   IntrospectiveMethods const& methods,
                   unsigned id) {
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
