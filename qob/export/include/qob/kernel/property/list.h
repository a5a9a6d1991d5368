#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/containers/sequence/sequencemember.h"

/// A multi-valued property on a state. There, the two getters distinguish reading from writing: an
/// empty list has no container, and reading must not create one.
namespace QOB::property {

/// The current elements, for reading only.
template <class Element, class Container>
Sequence<Element> readList(SequenceMember<Container> const& member, Deviant deviant) {
    return {const_cast<Container*>(&member.read()), deviant};
}

/// The container. Some classes declare the getter const; a caller with a writable state may write
/// it.
template <class Element, class Container>
Sequence<Element> writeList(SequenceMember<Container> const& member, Deviant deviant) {
    return {&const_cast<SequenceMember<Container>&>(member).write(), deviant};
}

} // namespace QOB::property
