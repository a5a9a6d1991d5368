#pragma once

#include "qob/kernel/property/reference.h"

/// A property that a subclass narrows: the base's operations forward to those of the subclass,
/// which stores the single value.
namespace QOB::property {

/// A set of a narrowed end. An object that isn't of the narrower class becomes an empty handle,
/// which removes the property; an object of another model is refused.
template <class Narrow, auto Set, class Intf, class Wide>
void setNarrowed(Intf* object,
                 Deviant deviant,
                 Wide const& value,
                 IntrospectiveMethods const& methods,
                 unsigned id) {
    Narrow const narrow(value);
    if (!narrow.isValid()) {
        requireSameModel(object, deviant, value, methods, id);
    }
    (object->*Set)(deviant, narrow);
}

} // namespace QOB::property
