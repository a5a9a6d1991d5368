#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/property/access.h"
#include "qob/kernel/property/assign.h"

#include <vector>

/// How one property of an object is assigned from another state; see assign.h.
namespace QOB::property {

template <auto Has, auto Get, auto Set, auto Remove>
struct AssignOptional {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        if (!(source->*Has)(sourceDeviant)) {
            if ((target->*Has)(deviant)) {
                (target->*Remove)(deviant);
            }
            return;
        }
        auto const value = (source->*Get)(sourceDeviant);
        if (!(target->*Has)(deviant) || !((target->*Get)(deviant) == value)) {
            (target->*Set)(deviant, value);
        }
    }
};

/// A reference, seen in the target's deviant; removed if its value doesn't exist there. `Set` and
/// `Remove` write this property and its other end, and no other property.
template <auto Has, auto Get, auto Set, auto Remove>
struct AssignReference {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        auto value = (source->*Get)(sourceDeviant);
        value.setDeviant(deviant);
        bool const isThere = (source->*Has)(sourceDeviant) && (isState(target) || value.isValid());
        bool const has = (target->*Has)(deviant);
        if (isThere && !(has && (target->*Get)(deviant) == value)) {
            (target->*Set)(deviant, value);
        } else if (!isThere && has) {
            (target->*Remove)(deviant);
        }
    }
};

namespace internal {

/// The sequence to write: on a root object the view that updates the other end, on a state the
/// container.
template <auto GetMany, auto GetOnlyMany, class Intf>
auto assigned(Intf* target, Deviant deviant) {
    // The two are the same for some classes: NOLINTNEXTLINE(bugprone-branch-clone)
    return isState(target) ? (target->*GetOnlyMany)(deviant) : (target->*GetMany)(deviant);
}

} // namespace internal

/// A sequence of values.
template <auto GetMany, auto GetOnlyMany = GetMany>
struct AssignValues {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        auto const from = (const_cast<Intf*>(source)->*GetMany)(sourceDeviant);
        if (!(target->*GetMany)(deviant).generic_equal(from)) {
            internal::assigned<GetMany, GetOnlyMany>(target, deviant).assign(from);
        }
    }
};

/// A sequence of objects: those that exist in the target's deviant, in the source's order. A state
/// copies all of them. On a root object the other end is updated only for added and removed
/// elements.
template <auto GetMany, auto GetOnlyMany = GetMany>
struct AssignObjects {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        auto const from = (const_cast<Intf*>(source)->*GetMany)(sourceDeviant);
        using Element = typename decltype(from)::value_type;
        auto const present = MakeSequence<Element>(deviant);
        for (Element const& element : from) {
            if (Element const here(element.get(), deviant); isState(target) || here.isValid()) {
                present.push_back(here);
            }
        }
        if ((target->*GetMany)(deviant).generic_equal(present)) {
            return;
        }
        if (!isState(target)) {
            exchange((target->*GetMany)(deviant), present);
        }
        auto const alone = (target->*GetOnlyMany)(deviant);
        if (!alone.generic_equal(present)) {
            alone.assign(present);
        }
    }

private:
    template <class Elements, class Present>
    static void exchange(Elements const& elements, Present const& present) {
        using Element = typename Elements::value_type;
        std::vector<Element> leaving;
        for (Element const& element : elements) {
            if (!present.contains(element)) {
                leaving.push_back(element);
            }
        }
        for (Element const& element : leaving) {
            elements.removeAll(element);
        }
        for (Element const& element : present) {
            elements.push_back(element); // nothing happens if it is there
        }
    }
};

} // namespace QOB::property
