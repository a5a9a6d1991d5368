#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/containers/sequence/views/associationsequence.h"
#include "qob/kernel/containers/sequence/views/deviantsequence.h"
#include "qob/qob/introspection.h"

/// A multi-valued property: the sequences that its getters on a root object return.
namespace QOB::property {

/// The pointer by which the kernel knows an object: a class may inherit its base twice, and the
/// first one counts.
template <class Intf>
NSInterface::ObjectIntf* kernelObject(Intf const* object) {
    if constexpr (std::is_convertible_v<Intf const*, NSInterface::ObjectIntf const*>) {
        return castObject<NSInterface::ObjectIntf>(const_cast<Intf*>(object));
    } else {
        return upcast<NSInterface::ObjectIntf>(const_cast<Intf*>(object));
    }
}

/// One end, in the deviant of the handle.
template <class Element, class Intf>
Sequence<Element>
elements(Intf const* object, Deviant deviant, IntrospectiveMethods const& methods, unsigned id) {
    return {new GenericDeviantSequence(kernelObject(object), deviant, &methods, id), deviant};
}

/// One end, whose writes also update the single-valued other end: the property `oppositeId` of the
/// elements.
template <class Element, class Intf>
Sequence<Element> elementsWithOwner(Intf const* object,
                                    Deviant deviant,
                                    IntrospectiveMethods const& methods,
                                    unsigned id,
                                    IntrospectiveMethods const& oppositeMethods,
                                    unsigned oppositeId) {
    Sequence<Element> const inner = elements<Element>(object, deviant, methods, id);
    return {new GenericAssociationSequence(Object(kernelObject(object), deviant),
                                           inner.pointer(),
                                           &oppositeMethods,
                                           oppositeId,
                                           true),
            deviant};
}

/// The value of a property that only combines others, in a class that doesn't say which ones.
/// Refuses writes, as a combination does.
template <class Element>
Sequence<Element> noElements(Deviant deviant) {
    return SequenceCombination<Element>(deviant, 0);
}

} // namespace QOB::property
