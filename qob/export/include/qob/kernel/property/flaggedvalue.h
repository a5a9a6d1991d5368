#pragma once

#include "qob/kernel/property/access.h"
#include "qob/kernel/property/mandatoryvalue.h"

/// A value that may be absent and has a default to fall back to: the value and a flag in the state.
/// A removal clears the flag and brings back the property's default.
namespace QOB::property {

/// A removal of what isn't there touches nothing.
template <auto Has, auto Remove, class Intf>
void removeFlagged(Intf* object, Deviant deviant) {
    if ((readState(object, deviant)->*Has)(deviant)) {
        (writeState(object, deviant)->*Remove)(deviant);
    }
}

/// A value class takes every value, also one that isn't valid. A value that is there already
/// touches nothing.
template <auto Has, auto Get, auto Set, class Intf, class Value>
void setFlaggedUnchecked(Intf* object, Deviant deviant, Value const& value) {
    Intf const* const state = readState(object, deviant);
    if ((state->*Has)(deviant) && (state->*Get)(deviant) == value) {
        return;
    }
    (writeState(object, deviant)->*Set)(deviant, value);
}

/// An invalid value is a removal.
template <auto Has, auto Get, auto Set, auto Remove, class Intf, class Value>
void setFlagged(Intf* object, Deviant deviant, Value const& value) {
    if (isInvalidArgument(value)) {
        (object->*Remove)(deviant);
        return;
    }
    setFlaggedUnchecked<Has, Get, Set>(object, deviant, value);
}

/// The two on a state: both fields at once.
template <class Value>
void storeFlagged(Value& field, bool& has, Value const& value) {
    field = value;
    has = true;
}

template <class Value>
void clearFlagged(Value& field, bool& has, Value const& byDefault) {
    field = byDefault;
    has = false;
}

} // namespace QOB::property
