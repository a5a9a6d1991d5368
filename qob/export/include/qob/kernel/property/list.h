#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/containers/sequence/sequencemember.h"

/// A multi-valued property on a state. There the two getters tell reading from writing: an empty
/// list has no container to read from, and reading must not make one.
namespace QOB::property {

/// The elements as they stand; for reading only.
template <class Element, class Container>
Sequence<Element> readList(SequenceMember<Container> const& member, Deviant deviant) {
    return {const_cast<Container*>(&member.read()), deviant};
}

/// The container. Some classes declare the getter const; who has a state to write may write it.
template <class Element, class Container>
Sequence<Element> writeList(SequenceMember<Container> const& member, Deviant deviant) {
    return {&const_cast<SequenceMember<Container>&>(member).write(), deviant};
}

} // namespace QOB::property
