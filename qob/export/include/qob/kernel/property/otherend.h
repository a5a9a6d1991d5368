#pragma once

#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "qob/kernel/containers/sequence/sequenceref.h"
#include "qob/kernel/property/access.h"
#include "qob/kernel/upcast.h"
#include "qob/qob/object.h"

/// The other end of an association, for rules that update both ends. The other end is written
/// directly on its state, without a view and without calling the first end again.
namespace QOB::property {

/// Raises if `container` only accepts a narrower class than the object's.
QOB_EXPORT void requireElement(Generic::SequenceRef const& elements,
                               ClassObject const& object,
                               ClassObject const& container);

/// The class of a list's elements, as the functions below check it.
using ElementCast = NSInterface::ClassObjectIntf* (*)(void* data);

// The list of a state that holds the objects of a reference's other end. The object is known to be
// of the class that `known` accepts; a list of a narrower class raises for others.
QOB_EXPORT bool
isInList(Generic::SequenceRef const& list, NSInterface::ClassObjectIntf* object, ElementCast known);
// For an owner whose state is written directly: the object is searched for and added or removed at
// once. Both return false, with nothing changed, for a list that isn't sure to be the state's own:
// a view, and for an addition also an empty list. Then the functions below do it.
QOB_EXPORT bool addDirectly(Generic::SequenceRef const& list,
                            NSInterface::ClassObjectIntf* object,
                            ElementCast known);
QOB_EXPORT bool removeDirectly(Generic::SequenceRef const& list,
                               NSInterface::ClassObjectIntf* object,
                               ElementCast known);
/// An object that isn't there.
QOB_EXPORT void appendToList(Generic::SequenceRef const& list,
                             NSInterface::ClassObjectIntf* object);
QOB_EXPORT void removeFromList(Generic::SequenceRef const& list,
                               NSInterface::ClassObjectIntf* object);

/// An object as the kernel knows it; asks the object where the pointer may be to its second base.
template <class Intf>
NSInterface::ClassObjectIntf* classObjectOf(Intf* object) {
    if constexpr (MayBeSecondPart<Intf>) {
        return castObject<NSInterface::ClassObjectIntf>(object);
    } else {
        return upcast<NSInterface::ClassObjectIntf>(object);
    }
}

/// A multi-valued end: `GetMany` returns its elements, `GetOnlyMany` on a state its container. Its
/// writes are parts of rules that have a OneWrite.
template <auto GetMany, auto GetOnlyMany>
struct ManyAtOtherEnd {
    /// Raises if the class of `other` doesn't accept the object.
    template <class Other, class Intf>
    static void requireRoom(Other const& other, Deviant deviant, Intf* object) {
        requireElement(elements(other, deviant), elementOf<Other>(object, deviant), other);
    }
    /// Does nothing if the object is already there.
    template <class Other, class Intf>
    static void add(Other const& other, Deviant deviant, Intf* object) {
        auto* const element = classObjectOf(object);
        if (writesDirectly(other.get(), deviant) &&
            addDirectly(elements(other, deviant), element, known<Other, Intf>)) {
            return;
        }
        if (!isInList(elements(other, deviant), element, known<Other, Intf>)) {
            appendToList((writeState(other.get(), deviant)->*GetOnlyMany)(deviant), element);
        }
    }
    template <class Other, class Intf>
    static void remove(Other const& other, Deviant deviant, Intf* object) {
        auto* const element = classObjectOf(object);
        if (writesDirectly(other.get(), deviant) &&
            removeDirectly(elements(other, deviant), element, known<Other, Intf>)) {
            return;
        }
        if (isInList(elements(other, deviant), element, known<Other, Intf>)) {
            removeFromList((writeState(other.get(), deviant)->*GetOnlyMany)(deviant), element);
        }
    }

private:
    template <class Other>
    static auto elements(Other const& other, Deviant deviant) {
        auto* const state = const_cast<typename Other::Interface*>(readState(other.get(), deviant));
        return (state->*GetMany)(deviant);
    }
    template <class Other, class Intf>
    static auto elementOf(Intf* object, Deviant deviant) {
        using Elements = decltype(elements(std::declval<Other const&>(), deviant));
        return typename Elements::value_type(object, deviant);
    }
    /// The class that the object is known to be of; null if the list has to ask.
    template <class Other, class Intf>
    static constexpr ElementCast known = [] {
        using Elements = decltype(elements(std::declval<Other const&>(), Deviant()));
        using Element = typename Elements::value_type;
        if constexpr (std::is_base_of_v<typename Element::Interface, Intf>) {
            return ElementCast(&MultiIndexImplInternal::castElement<Element>);
        } else {
            return ElementCast(nullptr);
        }
    }();
};

} // namespace QOB::property
