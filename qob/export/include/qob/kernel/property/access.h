#pragma once

#include "qob/kernel/deviant/onewrite.h"
#include "qob/kernel/upcast.h"
#include "qob/qob/assert.h"
#include "qob/qob/deviant.h"
#include "qob/qob/rootpart.h"

/// The bodies of an interface class's operations, one header per shape of property. They run on the
/// root object, select the state for a deviant and call the same operation on the state, which
/// accesses the field. Operations are passed as pointers to virtual members, so the calls are
/// virtual calls as if written by hand.
namespace QOB::property {

using QOB::internal::OneWrite;

/// Raises for null, which a state returns when asked for a state.
inline void requireState(void const* state) {
    QOB_REQUIRE_IN("qob/export/include/qob/kernel/property/access.h",
                   state != nullptr,
                   "this operation is not available on a state");
}

/// The state that a read of `object` in the deviant sees, as the class that declares the property.
/// Raises if `object` is itself a state, which doesn't have this operation.
template <class Intf>
Intf const* readState(Intf const* object, Deviant deviant) {
    Intf const* const state = object->getReadDeviantI(deviant, object);
    requireState(state);
    return state;
}

/// The state that a write changes; see Deviations::writeState.
template <class Intf>
Intf* writeState(Intf* object, Deviant deviant) {
    Intf* const state = object->getWriteDeviantI(deviant, object);
    requireState(state);
    return state;
}

/// True if a write changes the state that a read finds, and neither checks nor records come first.
template <class Intf>
bool writesDirectly(Intf const* object, Deviant deviant) {
    return deviant == QOB::internal::rootDeviantOf(upcast<NSInterface::ObjectIntf>(object)) &&
           deviant.isWritableWithoutChecks();
}

/// The deviant that a call on a root object acts on: for one of another model, the object's root.
/// The kernel records writes there.
template <class Intf>
Deviant ownDeviant(Intf const* object, Deviant deviant) {
    return deviant.inModelOf(QOB::internal::rootDeviantOf(upcast<NSInterface::ObjectIntf>(object)));
}

/// True for a state, which belongs to no model; false for a root object.
template <class Intf>
bool isState(Intf const* object) {
    return !QOB::internal::rootDeviantOf(upcast<NSInterface::ObjectIntf>(object)).isNotNull();
}

/// A getter or a `has` of any shape.
template <auto Get, class Intf>
auto get(Intf const* object, Deviant deviant) {
    return (readState(object, deviant)->*Get)(deviant);
}

} // namespace QOB::property
