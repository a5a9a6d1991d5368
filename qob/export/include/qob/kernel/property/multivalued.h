#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/containers/sequence/views/associationsequence.h"
#include "qob/kernel/containers/sequence/views/deviantsequence.h"
#include "qob/qob/reflection.h"

/// A property that holds any number of values: what its getters on a root object hand out.
namespace QOB::property {

/// One end, in whatever deviant the handle shows.
template <class Element, class Intf>
Sequence<Element>
elements(Intf* object, Deviant deviant, IntrospectiveMethods const& methods, unsigned id) {
    return {new GenericDeviantSequence(object, deviant, &methods, id), deviant};
}

/// One end, whose writes keep the single-valued other end in step: the property `oppositeId` of the
/// elements.
template <class Element, class Intf>
Sequence<Element> elementsWithOwner(Intf* object,
                                    Deviant deviant,
                                    IntrospectiveMethods const& methods,
                                    unsigned id,
                                    IntrospectiveMethods const& oppositeMethods,
                                    unsigned oppositeId) {
    Sequence<Element> const inner = elements<Element>(object, deviant, methods, id);
    return {new GenericAssociationSequence(
                Object(object, deviant), inner.pointer(), &oppositeMethods, oppositeId, true),
            deviant};
}

} // namespace QOB::property
