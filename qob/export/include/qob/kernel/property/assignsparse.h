#pragma once

#include "qob/kernel/property/assignrules.h"

/// How a sequence that few objects have is assigned from another state; see assign.h.
namespace QOB::property {

/// A sequence without an entry for most states. Creates nothing if neither side has elements.
/// `Assign` is only called if the source has elements.
template <auto Has, auto GetMany, auto GetOnlyMany, class Assign>
struct AssignSparse {
    template <class Intf>
    static void assign(Intf* target, Deviant deviant, Intf const* source, Deviant sourceDeviant) {
        if ((source->*Has)(sourceDeviant)) {
            (target->*GetOnlyMany)(deviant); // a state makes its sequence here
            Assign::assign(target, deviant, source, sourceDeviant);
        } else if ((target->*Has)(deviant)) {
            (target->*GetMany)(deviant).clear();
        }
    }
};

/// A sequence of objects: those that exist in the target's deviant.
template <auto Has, auto GetMany, auto GetOnlyMany>
using AssignSparseSequence =
    AssignSparse<Has, GetMany, GetOnlyMany, AssignObjects<GetMany, GetOnlyMany>>;

template <auto Has, auto GetMany, auto GetOnlyMany>
using AssignSparseValues =
    AssignSparse<Has, GetMany, GetOnlyMany, AssignValues<GetMany, GetOnlyMany>>;

} // namespace QOB::property
