#pragma once

#include "qob/kernel/property/access.h"

/// A value that is always there: `has` is true without a look, `remove` does nothing.
namespace QOB::property {

template <class Value>
bool isInvalidArgument(Value const& value) {
    if constexpr (requires { value.isValid(); }) {
        return !value.isValid();
    } else {
        return false;
    }
}

/// A set compares first: a value that is there already touches nothing, so it neither makes a state
/// nor saves one for undo. An invalid value would be a removal, which does nothing either. Reads
/// through the root object's own getter, which is one call where the class has it close by.
template <auto Get, auto Set, class Intf, class Value>
void setMandatory(Intf* object, Deviant deviant, Value const& value) {
    if (isInvalidArgument(value) || (object->*Get)(deviant) == value) {
        return;
    }
    (writeState(object, deviant)->*Set)(deviant, value);
}

/// The same for a value class, which takes every value, also one that isn't valid.
template <auto Get, auto Set, class Intf, class Value>
void setMandatoryUnchecked(Intf* object, Deviant deviant, Value const& value) {
    if ((readState(object, deviant)->*Get)(deviant) == value) {
        return;
    }
    (writeState(object, deviant)->*Set)(deviant, value);
}

} // namespace QOB::property
