#pragma once

#include "qob/kernel/property/mandatoryvalue.h"

/// An optional value, stored as an invalid value in the state if it is absent.
namespace QOB::property {

/// An invalid value removes the property.
template <auto Get, auto Set, auto Remove, class Intf, class Value>
void setOptional(Intf* object, Deviant deviant, Value const& value) {
    if (isInvalidArgument(value)) {
        (object->*Remove)(deviant);
        return;
    }
    setMandatory<Get, Set>(object, deviant, value);
}

/// Removing an absent value does nothing.
template <auto Has, auto Remove, class Intf>
void removeOptional(Intf* object, Deviant deviant) {
    if ((readState(object, deviant)->*Has)(deviant)) {
        (writeState(object, deviant)->*Remove)(deviant);
    }
}

} // namespace QOB::property
