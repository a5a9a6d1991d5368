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

/// Where a set finds and puts the value: by the operations of the interface class, from wherever it
/// is called. Reads through the root object's own getter, which is one call where the class has it
/// close by.
template <auto Get, auto Set>
struct ByOperations {
    template <class Intf>
    static auto get(Intf const* object, Deviant deviant) {
        return (object->*Get)(deviant);
    }
    template <class Intf, class Value>
    static void set(Intf* object, Deviant deviant, Value const& value) {
        (writeState(object, deviant)->*Set)(deviant, value);
    }
};

/// The same for a root object, which knows the class of its states and so the field.
template <auto Field>
struct InField {
    template <class Root>
    static auto const& get(Root const* object, Deviant deviant) {
        return object->readState(deviant)->fields_.*Field;
    }
    template <class Root, class Value>
    static void set(Root* object, Deviant deviant, Value const& value) {
        object->writeState(deviant)->fields_.*Field = value;
    }
};

/// A set for a value class, which takes every value, also one that isn't valid. It compares first:
/// a value that is there already touches nothing, so it neither makes a state nor saves one for
/// undo.
template <class Place, class Object, class Value>
void setMandatoryUnchecked(Object* object, Deviant deviant, Value const& value) {
    if (!(Place::get(object, deviant) == value)) {
        Place::set(object, deviant, value);
    }
}

/// The same for the kernel's values: an invalid one would be a removal, which does nothing either.
template <class Place, class Object, class Value>
void setMandatory(Object* object, Deviant deviant, Value const& value) {
    if (!isInvalidArgument(value)) {
        setMandatoryUnchecked<Place>(object, deviant, value);
    }
}

template <auto Get, auto Set, class Intf, class Value>
void setMandatoryUnchecked(Intf* object, Deviant deviant, Value const& value) {
    setMandatoryUnchecked<ByOperations<Get, Set>>(object, deviant, value);
}
template <auto Get, auto Set, class Intf, class Value>
void setMandatory(Intf* object, Deviant deviant, Value const& value) {
    setMandatory<ByOperations<Get, Set>>(object, deviant, value);
}

} // namespace QOB::property
