#include "qob/kernel/containers/sequence/views/deviantsequence.h"

#include "qob/qob/nsinterface/objectintf.h"

namespace QOB {

using Generic::IteratorPtr;
using Generic::SequenceRef;

GenericDeviantSequence::GenericDeviantSequence(NSInterface::ObjectIntf* object,
                                               Deviant const& deviant,
                                               IntrospectiveMethods const* methods,
                                               unsigned propertyId)
    : object_(object), deviant_(deviant), methods_(methods), propertyId_(propertyId) {
}

GenericDeviantSequence::~GenericDeviantSequence() = default;

Deviant GenericDeviantSequence::in(Deviant const& deviant) const noexcept {
    return deviant.isNotNull() ? deviant : deviant_;
}

SequenceRef GenericDeviantSequence::reading(Deviant const& deviant) const {
    Deviant const where = in(deviant);
    NSInterface::ObjectIntf* const state = object_->getReadDeviantI(where, object_.get());
    SequenceRef result = methods_->getMultiValued(state, where, propertyId_, false);
    result.access();
    return result;
}

SequenceRef GenericDeviantSequence::writing(Deviant const& deviant) {
    Deviant const where = in(deviant);
    NSInterface::ObjectIntf* const state = object_->getWriteDeviantI(where, object_.get());
    SequenceRef result = methods_->getOnlyMultiValued(state, where, propertyId_, false);
    result.access();
    return result;
}

bool GenericDeviantSequence::isUnique() const noexcept {
    return methods_->properties != nullptr &&
           (methods_->properties[propertyId_]->flags & PropertyUnique) != 0;
}

bool GenericDeviantSequence::refuses(Deviant const& deviant, Ref const& element) const {
    return isUnique() && reading(deviant).generic_contains(element);
}

IteratorPtr GenericDeviantSequence::moved(IteratorIntf const* position,
                                          SequenceRef const& from,
                                          SequenceRef const& to) const {
    if (from.get() == to.get()) {
        return position->generic_clone();
    }
    // The first write in this deviant: what is written is a copy of what the position was taken
    // from, at the same length.
    IteratorPtr const walker = from.generic_begin();
    IteratorPtr result = to.generic_begin();
    for (int rest = from.generic_size(); rest != 0 && !walker->generic_sameAs(position); --rest) {
        walker->generic_next(from.getDeviant());
        result->generic_next(to.getDeviant());
    }
    return result;
}

void GenericDeviantSequence::generic_clear(Deviant const& deviant) {
    if (!generic_empty(deviant)) {
        writing(deviant).generic_clear();
    }
}

IteratorPtr GenericDeviantSequence::generic_insert(Deviant const& deviant,
                                                   IteratorIntf const* position,
                                                   Ref element) {
    SequenceRef const source = reading(deviant);
    if (isUnique() && source.generic_contains(element)) {
        // A container that has the element gives its place and changes nothing.
        return source.generic_insert(position, std::move(element));
    }
    SequenceRef const target = writing(deviant);
    return target.generic_insert(moved(position, source, target).get(), std::move(element));
}

void GenericDeviantSequence::generic_insert(Deviant const& deviant, int index, Ref element) {
    internal::checkInsertIndex(index, generic_size(deviant));
    if (!refuses(deviant, element)) {
        writing(deviant).generic_insert(index, std::move(element));
    }
}

void GenericDeviantSequence::generic_erase(Deviant const& deviant, int index) {
    internal::checkElementIndex(index, generic_size(deviant));
    writing(deviant).generic_erase(index);
}

IteratorPtr GenericDeviantSequence::generic_erase(Deviant const& deviant,
                                                  IteratorIntf const* first,
                                                  IteratorIntf const* last) {
    if (first->generic_sameAs(last)) {
        return first->generic_clone();
    }
    SequenceRef const source = reading(deviant);
    SequenceRef const target = writing(deviant);
    return target.generic_erase(moved(first, source, target).get(),
                                moved(last, source, target).get());
}

IteratorPtr GenericDeviantSequence::generic_erase(Deviant const& deviant,
                                                  IteratorIntf const* position) {
    SequenceRef const source = reading(deviant);
    SequenceRef const target = writing(deviant);
    return target.generic_erase(moved(position, source, target).get());
}

void GenericDeviantSequence::generic_pop_back(Deviant const& deviant) {
    internal::checkNotEmpty(generic_empty(deviant));
    writing(deviant).generic_pop_back();
}

void GenericDeviantSequence::generic_pop_front(Deviant const& deviant) {
    internal::checkNotEmpty(generic_empty(deviant));
    writing(deviant).generic_pop_front();
}

void GenericDeviantSequence::generic_push_back(Deviant const& deviant, Ref element) {
    if (!refuses(deviant, element)) {
        writing(deviant).generic_push_back(std::move(element));
    }
}

void GenericDeviantSequence::generic_push_front(Deviant const& deviant, Ref element) {
    if (!refuses(deviant, element)) {
        writing(deviant).generic_push_front(std::move(element));
    }
}

void GenericDeviantSequence::generic_replace(Deviant const& deviant, int index, Ref element) {
    if (!Generic::sameElement(generic_at(deviant, index), element)) {
        refuses(deviant, element); // raises for what can't be inserted, before there is a state
        writing(deviant).generic_replace(index, std::move(element));
    }
}

int GenericDeviantSequence::generic_removeAll(Deviant const& deviant, Ref element) {
    return reading(deviant).generic_contains(element)
               ? writing(deviant).generic_removeAll(std::move(element))
               : 0;
}

} // namespace QOB
