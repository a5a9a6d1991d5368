#pragma once

#include "qob/kernel/property/access.h"
#include "qob/kernel/property/mandatoryvalue.h"

/// An optional value with a default: the value and a flag in the state. A removal clears the flag
/// and restores the property's default.
namespace QOB::property {

/// Removing an absent value does nothing.
template <auto Has, auto Remove, class Intf>
void removeFlagged(Intf* object, Deviant deviant) {
    if ((readState(object, deviant)->*Has)(deviant)) {
        (writeState(object, deviant)->*Remove)(deviant);
    }
}

/// For value classes, which accept every value, even an invalid one. Setting the current value does
/// nothing.
template <auto Has, auto Get, auto Set, class Intf, class Value>
void setFlaggedUnchecked(Intf* object, Deviant deviant, Value const& value) {
    Intf const* const state = readState(object, deviant);
    if ((state->*Has)(deviant) && (state->*Get)(deviant) == value) {
        return;
    }
    (writeState(object, deviant)->*Set)(deviant, value);
}

/// An invalid value removes the property.
template <auto Has, auto Get, auto Set, auto Remove, class Intf, class Value>
void setFlagged(Intf* object, Deviant deviant, Value const& value) {
    if (isInvalidArgument(value)) {
        (object->*Remove)(deviant);
        return;
    }
    setFlaggedUnchecked<Has, Get, Set>(object, deviant, value);
}

/// Value and flag on a state: writes both fields at once.
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
