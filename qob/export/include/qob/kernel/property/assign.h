#pragma once

#include "qob/kernel/property/mandatoryvalue.h"
#include "qob/kernel/upcast.h"
#include "qob/qob/assert.h"
#include "qob/qob/exception.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/visitor.h"

/// Assigning the values of another state to an object, property by property: the parts of
/// ObjectIntf::internal_deviationAssign. On a root object each assignment is a full set, on a state
/// a plain copy. Properties are independent: if one raises QOB::Exception, it keeps its value and
/// the next one is tried.
namespace QOB::property {

/// A value that is always there.
template <auto Get, auto Set>
struct AssignMandatory {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        auto const value = (source->*Get)(sourceDeviant);
        if ((target->*Get)(deviant) == value) {
            return;
        }
        if (isInvalidArgument(value) && !isState(target)) {
            // A set would treat it as a removal, which does nothing.
            OneWrite const write;
            (writeState(target, deviant)->*Set)(deviant, value);
        } else {
            (target->*Set)(deviant, value);
        }
    }
};

template <class Rule, class Intf>
void assignOne(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
    try {
        Rule::assign(target, deviant, source, sourceDeviant);
    } catch (Exception const&) {
        return; // this property stays as it is
    }
}

/// The properties that one class declares, in the order of the rules.
template <class... Rule, class Intf>
void assignEach([[maybe_unused]] Intf* target,
                [[maybe_unused]] Deviant deviant,
                [[maybe_unused]] Intf const* source,
                [[maybe_unused]] Deviant sourceDeviant) {
    (assignOne<Rule>(target, deviant, source, sourceDeviant), ...);
}

/// Assigns the properties of a class and its bases, in this order. Raises, and assigns nothing, if
/// the source is of another class.
template <class Intf, class... Declaring>
void assignBlocks(Intf* target,
                  Deviant deviant,
                  NSInterface::ObjectIntf* source,
                  Deviant sourceDeviant) {
    Intf const* const from = castObject<Intf>(source);
    QOB_REQUIRE_IN("qob/export/include/qob/kernel/property/assign.h",
                   from != nullptr,
                   "The source of the assignment is no object of the same class.");
    OneWrite const write;
    (upcast<Declaring>(target)->Declaring::internal_assignBlock(
         deviant, upcast<Declaring>(from), sourceDeviant),
     ...);
}

} // namespace QOB::property
