#pragma once

#include "qob/kernel/property/access.h"
#include "qob/qob/reflection.h"

/// A reference without an opposite end: one counted pointer in the state.
namespace QOB::property {

/// Raises if the value lies in another model; for properties that have an opposite or own their
/// value.
template <class Handle>
void requireSameModel(Deviant deviant,
                      Handle const& value,
                      IntrospectiveMethods const& methods,
                      unsigned id) {
    QOB_REQUIRE_IN("qob/export/include/qob/kernel/property/reference.h",
                   !value.isValid() ||
                       !deviant.isInDifferentModel(value.getDeviant(), &methods, id),
                   "Cross-model bi-directional associations are currently disallowed!");
}

/// On a root object a reference is there if its value exists in the deviant; a state only tells
/// whether it holds one.
template <auto Has, auto Get, class Intf>
bool hasReference(Intf const* object, Deviant deviant) {
    Intf const* const state = readState(object, deviant);
    return (state->*Has)(deviant) && (state->*Get)(deviant).isValid();
}

/// Sets one end: nothing happens if the same object is there already.
template <auto Get, auto Set, class Intf, class Handle>
void setOnlyReference(Intf* object,
                      Deviant deviant,
                      Handle const& value,
                      IntrospectiveMethods const& methods,
                      unsigned id) {
    auto const old = (readState(object, deviant)->*Get)(deviant);
    if (old == value) {
        return;
    }
    Intf* const state = writeState(object, deviant);
    deviant.removeReferred(old.getDeviant(), &methods, id);
    deviant.setOrAddReferred(value.getDeviant(), &methods, id);
    (state->*Set)(deviant, value);
}

/// An invalid value is a removal.
template <auto Get, auto Set, auto Remove, class Intf, class Handle>
void setReference(Intf* object,
                  Deviant deviant,
                  Handle const& value,
                  IntrospectiveMethods const& methods,
                  unsigned id) {
    if (!value.isValid()) {
        (object->*Remove)(deviant);
        return;
    }
    setOnlyReference<Get, Set>(object, deviant, value, methods, id);
}

/// Nothing happens if there is none.
template <auto Get, auto Set, class Intf>
void removeOnlyReference(Intf* object,
                         Deviant deviant,
                         IntrospectiveMethods const& methods,
                         unsigned id) {
    auto const old = (readState(object, deviant)->*Get)(deviant);
    if (old.get() == nullptr) {
        return;
    }
    Intf* const state = writeState(object, deviant);
    deviant.removeReferred(old.getDeviant(), &methods, id);
    (state->*Set)(deviant, decltype(old)());
}

} // namespace QOB::property
