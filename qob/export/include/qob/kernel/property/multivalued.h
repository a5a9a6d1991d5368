#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/containers/sequence/views/associationsequence.h"
#include "qob/kernel/containers/sequence/views/deviantsequence.h"
#include "qob/qob/reflection.h"

/// A property that holds any number of values: what its getters on a root object hand out.
namespace QOB::property {

/// What the kernel knows an object by: a class may hold its base twice, and only the first counts.
template <class Intf>
NSInterface::ObjectIntf* kernelObject(Intf const* object) {
    if constexpr (std::is_convertible_v<Intf const*, NSInterface::ObjectIntf const*>) {
        return castObject<NSInterface::ObjectIntf>(const_cast<Intf*>(object));
    } else {
        return upcast<NSInterface::ObjectIntf>(const_cast<Intf*>(object));
    }
}

/// One end, in whatever deviant the handle shows.
template <class Element, class Intf>
Sequence<Element>
elements(Intf const* object, Deviant deviant, IntrospectiveMethods const& methods, unsigned id) {
    return {new GenericDeviantSequence(kernelObject(object), deviant, &methods, id), deviant};
}

/// One end, whose writes keep the single-valued other end in step: the property `oppositeId` of the
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

/// What a class has for a property that only shows others, before a subclass says which. Refuses
/// writes, as the combination of several does.
template <class Element>
Sequence<Element> noElements(Deviant deviant) {
    return SequenceCombination<Element>(deviant, 0);
}

} // namespace QOB::property
