#pragma once

#include "qob/kernel/property/access.h"
#include "qob/kernel/property/mandatoryvalue.h"

/// An optional value. The state says whether it is there, by a flag or by an invalid
/// value; a removal restores the property's default.
namespace QOB::property {

/// Removing an absent value does nothing.
template <auto Has, auto Remove, class Intf>
void removeOptional(Intf* object, Deviant deviant) {
    if ((readState(object, deviant)->*Has)(deviant)) {
        OneWrite const write;
        (writeState(object, deviant)->*Remove)(deviant);
    }
}

/// For value classes: stores the value as given, even an invalid one. Setting the current value
/// does nothing.
template <auto Has, auto Get, auto Set, class Intf, class Value>
void setOptionalAsGiven(Intf* object, Deviant deviant, Value const& value) {
    Intf const* const state = readState(object, deviant);
    if ((state->*Has)(deviant) && (state->*Get)(deviant) == value) {
        return;
    }
    OneWrite const write;
    (writeState(object, deviant)->*Set)(deviant, value);
}

/// For the kernel's values: an invalid value removes the property.
template <auto Has, auto Get, auto Set, auto Remove, class Intf, class Value>
void setOptional(Intf* object, Deviant deviant, Value const& value) {
    if (isInvalidArgument(value)) {
        (object->*Remove)(deviant);
        return;
    }
    setOptionalAsGiven<Has, Get, Set>(object, deviant, value);
}

/// Value and flag on a state: writes both fields at once.
template <class Value>
void storeOptional(Value& field, bool& has, Value const& value) {
    field = value;
    has = true;
}

template <class Value>
void clearOptional(Value& field, bool& has, Value const& byDefault) {
    field = byDefault;
    has = false;
}

} // namespace QOB::property
