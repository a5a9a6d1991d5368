#pragma once

#include "qob/kernel/property/access.h"
#include "qob/qob/introspection.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/visitor.h"

/// A reference without an opposite end: one counted pointer in the state.
namespace QOB::property {

/// Records that a reference in `state`, one of `object`'s, changes from one value to another;
/// either may be null. Ignores values of the object's own model.
QOB_EXPORT void exchangeForeign(NSInterface::ClassObjectIntf const* object,
                                NSInterface::ClassObjectIntf* state,
                                NSInterface::ObjectIntf const* old,
                                NSInterface::ObjectIntf* value);

/// Raises if the value belongs to another model than the object; for properties that have an
/// opposite or own their value. Returns whether there is a value.
template <class Intf, class Handle>
bool requireSameModel(Intf const* object,
                      Deviant deviant,
                      Handle const& value,
                      IntrospectiveMethods const& methods,
                      unsigned id) {
    bool const isThere = value.isValid();
    QOB_REQUIRE_IN(
        "qob/export/include/qob/kernel/property/reference.h",
        !isThere ||
            !ownDeviant(object, deviant).isInDifferentModel(value.getDeviant(), &methods, id),
        "Cross-model bi-directional associations are currently disallowed!");
    return isThere;
}

/// On a root object a reference is present if its value exists in the deviant; a state only says
/// whether its field is set.
template <auto Has, auto Get, class Intf>
bool hasReference(Intf const* object, Deviant deviant) {
    Intf const* const state = readState(object, deviant);
    return (state->*Has)(deviant) && (state->*Get)(deviant).isValid();
}

/// Informs the kernel that a reference in a state of the object changes.
template <class Intf, class Old, class Handle>
void tellReferred(Intf* object,
                  Intf* state,
                  Deviant deviant,
                  Old const& old,
                  Handle const& value,
                  IntrospectiveMethods const& methods,
                  unsigned id) {
    Deviant const own = ownDeviant(object, deviant);
    own.removeReferred(old.getDeviant(), &methods, id);
    own.setOrAddReferred(value.getDeviant(), &methods, id);
    // Objects of the same model are seen in the same deviant.
    if ((old.get() != nullptr && old.getDeviant() != own) ||
        (value.get() != nullptr && value.getDeviant() != own)) {
        using NSInterface::ClassObjectIntf;
        exchangeForeign(castObject<ClassObjectIntf>(object),
                        castObject<ClassObjectIntf>(state),
                        castObject<NSInterface::ObjectIntf>(old.get()),
                        castObject<NSInterface::ObjectIntf>(value.get()));
    }
}

/// Replaces `old`, the current value, by `value`, which differs. Either may be empty. A part of a
/// rule that has a OneWrite.
template <auto Set, class Intf, class Old, class Handle>
void replaceReference(Intf* object,
                      Deviant deviant,
                      Old const& old,
                      Handle const& value,
                      IntrospectiveMethods const& methods,
                      unsigned id) {
    Intf* const state = writeState(object, deviant);
    tellReferred(object, state, deviant, old, value, methods, id);
    (state->*Set)(deviant, value);
}

/// Does nothing if there is none.
template <auto Get, auto Set, class Intf>
void removeOnlyReference(Intf* object,
                         Deviant deviant,
                         IntrospectiveMethods const& methods,
                         unsigned id) {
    auto const old = (readState(object, deviant)->*Get)(deviant);
    if (old.get() != nullptr) {
        OneWrite const write;
        replaceReference<Set>(object, deviant, old, decltype(old)(), methods, id);
    }
}

/// Sets a non-empty value. Does nothing if it is the current one.
template <auto Get, auto Set, class Intf, class Handle>
void storeReference(Intf* object,
                    Deviant deviant,
                    Handle const& value,
                    IntrospectiveMethods const& methods,
                    unsigned id) {
    auto const old = (readState(object, deviant)->*Get)(deviant);
    if (!(old == value)) {
        OneWrite const write;
        replaceReference<Set>(object, deviant, old, value, methods, id);
    }
}

/// An invalid value removes the property.
template <auto Get, auto Set, auto Remove, class Intf, class Handle>
void setReference(Intf* object,
                  Deviant deviant,
                  Handle const& value,
                  IntrospectiveMethods const& methods,
                  unsigned id) {
    if (value.isValid()) {
        storeReference<Get, Set>(object, deviant, value, methods, id);
    } else {
        (object->*Remove)(deviant);
    }
}

/// The same for one end.
template <auto Get, auto Set, class Intf, class Handle>
void setOnlyReference(Intf* object,
                      Deviant deviant,
                      Handle const& value,
                      IntrospectiveMethods const& methods,
                      unsigned id) {
    if (value.isValid()) {
        storeReference<Get, Set>(object, deviant, value, methods, id);
    } else {
        removeOnlyReference<Get, Set>(object, deviant, methods, id);
    }
}

} // namespace QOB::property
