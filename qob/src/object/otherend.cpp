#include "qob/kernel/property/otherend.h"

#include "object/containerlists.h"
#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "qob/kernel/containers/sequence/views/filteredsequence.h"

#include <typeinfo>

namespace QOB::property {

void requireElement(Generic::SequenceRef const& elements,
                    ClassObject const& object,
                    ClassObject const& container) {
    using filtered_sequence_internal::GenericFilteredSequence;
    Generic::SequenceIntf const& sequence = *elements.access();
    if (typeid(sequence) == typeid(GenericFilteredSequence) &&
        !static_cast<GenericFilteredSequence const&>(sequence).takes(Generic::toRef(object))) {
        failNoList(container.get(), object.get());
    }
}

namespace {
using References =
    MultiIndexImplInternal::MultiIndexImplForRefs<true, MultiIndexImplInternal::ReferenceKey>;
} // namespace

bool isInList(Generic::SequenceRef const& list,
              NSInterface::ClassObjectIntf* object,
              ElementCast known) {
    References const* const references = References::of(list.access());
    return references != nullptr
               ? references->has(object, known)
               : list.generic_contains(Generic::objectRef(object, list.getDeviant()));
}

bool addDirectly(Generic::SequenceRef const& list,
                 NSInterface::ClassObjectIntf* object,
                 ElementCast known) {
    References* const references = References::of(list.access());
    if (references == nullptr || references->storage().empty()) {
        return false; // an empty list may be none of the state
    }
    references->appendIfNew(object, known);
    return true;
}

bool removeDirectly(Generic::SequenceRef const& list,
                    NSInterface::ClassObjectIntf* object,
                    ElementCast known) {
    References* const references = References::of(list.access());
    if (references != nullptr) {
        references->eraseIfThere(object, known);
    }
    return references != nullptr;
}

void appendToList(Generic::SequenceRef const& list, NSInterface::ClassObjectIntf* object) {
    if (References* const references = References::of(list.access())) {
        references->storage().append(object);
    } else {
        list.generic_push_back(Generic::objectRef(object, list.getDeviant()));
    }
}

void removeFromList(Generic::SequenceRef const& list, NSInterface::ClassObjectIntf* object) {
    if (References* const references = References::of(list.access())) {
        references->storage().erase(object);
    } else {
        list.generic_removeAll(Generic::objectRef(object, list.getDeviant()));
    }
}

} // namespace QOB::property
