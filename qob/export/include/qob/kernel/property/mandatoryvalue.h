#pragma once

#include "qob/kernel/property/access.h"

/// A value that is always there: `has` is always true, `remove` does nothing.
namespace QOB::property {

template <class Value>
bool isInvalidArgument(Value const& value) {
    if constexpr (requires { value.isValid(); }) {
        return !value.isValid();
    } else {
        return false;
    }
}

/// How a set reads and writes the value: by the operations of the interface class. The read uses
/// the root object's own getter, which is a single call if the class overrides it.
template <auto Get, auto Set>
struct ByOperations {
    template <class Intf>
    static auto get(Intf const* object, Deviant deviant) {
        return (object->*Get)(deviant);
    }
    template <class Intf, class Value>
    static void set(Intf* object, Deviant deviant, Value const& value) {
        OneWrite const write;
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
        if (auto* const state = object->directState(deviant)) {
            state->fields_.*Field = value;
        } else {
            setChecked(object, deviant, value);
        }
    }

private:
    /// Out of line: a direct write needs no frame.
    template <class Root, class Value>
    QOB_NOINLINE static void setChecked(Root* object, Deviant deviant, Value const& value) {
        if (QOB::internal::observedDeviants == 0) [[likely]] {
            object->checkedState(deviant)->fields_.*Field = value;
        } else {
            OneWrite const write;
            object->checkedState(deviant)->fields_.*Field = value;
        }
    }
};

/// For value classes: stores the value as given, even an invalid one. Compares first: setting the
/// current value does nothing, so it neither creates a state nor saves one for undo.
template <class Place, class Object, class Value>
void setMandatoryAsGiven(Object* object, Deviant deviant, Value const& value) {
    if (!(Place::get(object, deviant) == value)) {
        Place::set(object, deviant, value);
    }
}

/// For the kernel's values: an invalid value is ignored, since it stands for a removal, which does
/// nothing here.
template <class Place, class Object, class Value>
void setMandatory(Object* object, Deviant deviant, Value const& value) {
    if (!isInvalidArgument(value)) {
        setMandatoryAsGiven<Place>(object, deviant, value);
    }
}

template <auto Get, auto Set, class Intf, class Value>
void setMandatoryAsGiven(Intf* object, Deviant deviant, Value const& value) {
    setMandatoryAsGiven<ByOperations<Get, Set>>(object, deviant, value);
}
template <auto Get, auto Set, class Intf, class Value>
void setMandatory(Intf* object, Deviant deviant, Value const& value) {
    setMandatory<ByOperations<Get, Set>>(object, deviant, value);
}

} // namespace QOB::property
