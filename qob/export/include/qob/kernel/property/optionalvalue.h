#pragma once

#include "qob/kernel/property/mandatoryvalue.h"

/// A value that may be absent: an invalid one in the state.
namespace QOB::property {

/// An invalid value is a removal.
template <auto Get, auto Set, auto Remove, class Intf, class Value>
void setOptional(Intf* object, Deviant deviant, Value const& value) {
    if (isInvalidArgument(value)) {
        (object->*Remove)(deviant);
        return;
    }
    setMandatory<Get, Set>(object, deviant, value);
}

/// A removal of what isn't there touches nothing.
template <auto Has, auto Remove, class Intf>
void removeOptional(Intf* object, Deviant deviant) {
    if ((readState(object, deviant)->*Has)(deviant)) {
        (writeState(object, deviant)->*Remove)(deviant);
    }
}

} // namespace QOB::property
