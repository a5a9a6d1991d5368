#pragma once

#include "qob/kernel/property/reference.h"

/// A property that a subclass narrows: the base's operations hand on to the subclass's, under which
/// the one value is stored.
namespace QOB::property {

/// A set of an end that is narrowed. What is no object of the narrower class arrives as an empty
/// handle, which is a removal; an object of another model is refused as what it is.
template <class Narrow, auto Set, class Intf, class Wide>
void setNarrowed(Intf* object,
                 Deviant deviant,
                 Wide const& value,
                 IntrospectiveMethods const& methods,
                 unsigned id) {
    requireSameModel(object, deviant, value, methods, id);
    (object->*Set)(deviant, Narrow(value));
}

} // namespace QOB::property
