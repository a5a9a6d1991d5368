#include "qob/kernel/property/otherend.h"

#include "object/containerlists.h"
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

} // namespace QOB::property
