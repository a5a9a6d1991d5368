#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/property/assign.h"

/// How one property of an object is brought to what another state holds; see assign.h.
namespace QOB::property {

template <auto Has, auto Get, auto Set, auto Remove>
struct AssignOptional {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        if (!(source->*Has)(sourceDeviant)) {
            (target->*Remove)(deviant);
            return;
        }
        auto const value = (source->*Get)(sourceDeviant);
        if (!(target->*Has)(deviant) || !((target->*Get)(deviant) == value)) {
            (target->*Set)(deviant, value);
        }
    }
};

/// A reference, shown in the target's deviant.
template <auto Has, auto Get, auto Set, auto Remove>
struct AssignReference {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        if (!(source->*Has)(sourceDeviant)) {
            if ((target->*Has)(deviant)) {
                (target->*Remove)(deviant);
            }
            return;
        }
        auto const value = (source->*Get)(sourceDeviant);
        value.setDeviant(deviant);
        if (!(target->*Has)(deviant) || !((target->*Get)(deviant) == value)) {
            (target->*Set)(deviant, value);
        }
    }
};

/// A sequence of objects: those that exist in the target's deviant, in the source's order.
template <auto GetMany>
struct AssignObjects {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        auto const from = (const_cast<Intf*>(source)->*GetMany)(sourceDeviant);
        using Element = typename decltype(from)::value_type;
        auto const present = MakeSequence<Element>(deviant);
        for (Element const& element : from) {
            if (Element const here(element.get(), deviant); here.isValid()) {
                present.push_back(here);
            }
        }
        auto const to = (target->*GetMany)(deviant);
        if (!to.generic_equal(present)) {
            to.assign(present);
        }
    }
};

} // namespace QOB::property
