#pragma once

#include "qob/kernel/containers/sequence/sequenceref.h"
#include "qob/kernel/property/access.h"
#include "qob/qob/object.h"

/// The other end of an association, for rules that update both ends. The other end is written
/// directly on its state, without a view and without calling the first end again.
namespace QOB::property {

/// Raises if `container` only accepts a narrower class than the object's.
QOB_EXPORT void requireElement(Generic::SequenceRef const& elements,
                               ClassObject const& object,
                               ClassObject const& container);

/// A multi-valued end: `GetMany` returns its elements, `GetOnlyMany` on a state its container.
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
        auto const element = elementOf<Other>(object, deviant);
        if (!present(other, deviant, element)) {
            OneWrite const write;
            (writeState(other.get(), deviant)->*GetOnlyMany)(deviant).push_back(element);
        }
    }
    template <class Other, class Intf>
    static void remove(Other const& other, Deviant deviant, Intf* object) {
        auto const element = elementOf<Other>(object, deviant);
        if (present(other, deviant, element)) {
            OneWrite const write;
            (writeState(other.get(), deviant)->*GetOnlyMany)(deviant).removeAll(element);
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
    template <class Other, class Element>
    static bool present(Other const& other, Deviant deviant, Element const& element) {
        return elements(other, deviant).contains(element);
    }
};

} // namespace QOB::property
