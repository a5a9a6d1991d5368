#include "qob/kernel/containers/sequence/views/associationsequence.h"

#include "qob/kernel/containers/sequence/views/deviantsequence.h"
#include "qob/kernel/deviant/onewrite.h"
#include "qob/qob/nsinterface/classobjectintf.h"

#include <typeinfo>
#include <utility>
#include <vector>

namespace QOB {

using Generic::IteratorPtr;
using Generic::objectOf;
using Generic::Ref;

GenericAssociationSequence::GenericAssociationSequence(Object owner,
                                                       Generic::SequencePtr inner,
                                                       IntrospectiveMethods const* methods,
                                                       unsigned oppositeId,
                                                       bool oppositeIsSingle)
    : owner_(std::move(owner)),
      inner_(std::move(inner)),
      methods_(methods),
      oppositeId_(oppositeId),
      oppositeIsSingle_(oppositeIsSingle) {
}

GenericAssociationSequence::~GenericAssociationSequence() = default;

void GenericAssociationSequence::checkInsertable(Deviant const& deviant, Ref const& element) const {
    isNew(deviant, element);
}

GenericDeviantSequence* GenericAssociationSequence::stored() const noexcept {
    Generic::SequenceIntf& inner = *inner_;
    return typeid(inner) == typeid(GenericDeviantSequence)
               ? static_cast<GenericDeviantSequence*>(inner_.get())
               : nullptr;
}

void GenericAssociationSequence::requireSameModel(Deviant const& deviant,
                                                  Ref const& element) const {
    Deviant const own = deviant.inModelOf(internal::rootDeviantOf(owner_.get()));
    QOB_REQUIRE(!own.isInDifferentModel(element.deviant, methods_, oppositeId_),
                "Cross-model bi-directional associations are currently disallowed!");
}

bool GenericAssociationSequence::isNew(Deviant const& deviant, Ref const& element) const {
    requireSameModel(deviant, element);
    if (inner_->generic_contains(deviant, element)) { // raises for another class and for null
        return false;
    }
    if (!internal::isThere(objectOf(element), deviant)) {
        NSInterface::ObjectIntf const* const tag = nullptr;
        objectOf(element)->getReadDeviantI(deviant, tag); // raises if it doesn't exist there
    }
    return true;
}

void GenericAssociationSequence::link(Deviant const& deviant, Ref const& element) {
    Object const owner(owner_.get(), deviant);
    if (oppositeIsSingle_) {
        methods_->setOnlySingleValued(objectOf(element), deviant, oppositeId_, owner);
    } else {
        methods_->getOnlyMultiValued(objectOf(element), deviant, oppositeId_, false)
            .generic_push_back(Generic::toRef(ClassObject(owner)));
    }
}

void GenericAssociationSequence::linkInserted(Deviant const& deviant, Ref const& element) {
    try {
        link(deviant, element);
    } catch (...) {
        inner_->generic_removeAll(deviant, element);
        throw;
    }
}

void GenericAssociationSequence::unlink(Deviant const& deviant, Ref const& element) {
    if (!internal::isThere(objectOf(element), deviant)) {
        return; // gone in this deviant, and its own end with it
    }
    Object const owner(owner_.get(), deviant);
    if (!oppositeIsSingle_) {
        methods_->getOnlyMultiValued(objectOf(element), deviant, oppositeId_, false)
            .generic_removeAll(Generic::toRef(ClassObject(owner)));
    } else if (methods_->getSingleValued(objectOf(element), deviant, oppositeId_) == owner) {
        methods_->removeOnlySingleValued(objectOf(element), deviant, oppositeId_);
    }
}

void GenericAssociationSequence::generic_clear(Deviant const& deviant) {
    internal::OneWrite const write;
    std::vector<Ref> elements;
    IteratorPtr const position = inner_->generic_begin(deviant);
    for (int rest = inner_->generic_size(deviant); rest != 0; --rest) {
        elements.push_back(position->generic_value(deviant));
        position->generic_next(deviant);
    }
    inner_->generic_clear(deviant);
    for (Ref const& element : elements) {
        unlink(deviant, element);
    }
}

IteratorPtr GenericAssociationSequence::generic_insert(Deviant const& deviant,
                                                       IteratorIntf const* position,
                                                       Ref element) {
    internal::OneWrite const write;
    bool const changes = isNew(deviant, element);
    IteratorPtr result = inner_->generic_insert(deviant, position, element);
    if (changes) {
        linkInserted(deviant, element);
    }
    return result;
}

void GenericAssociationSequence::generic_insert(Deviant const& deviant, int index, Ref element) {
    internal::OneWrite const write;
    internal::checkInsertIndex(index, inner_->generic_size(deviant));
    if (isNew(deviant, element)) {
        inner_->generic_insert(deviant, index, element);
        linkInserted(deviant, element);
    }
}

void GenericAssociationSequence::generic_erase(Deviant const& deviant, int index) {
    internal::OneWrite const write;
    Ref const element = inner_->generic_at(deviant, index);
    inner_->generic_erase(deviant, index);
    unlink(deviant, element);
}

IteratorPtr GenericAssociationSequence::generic_erase(Deviant const& deviant,
                                                      IteratorIntf const* first,
                                                      IteratorIntf const* last) {
    internal::OneWrite const write;
    std::vector<Ref> elements;
    // From where `first` stands in the sequence as it is.
    for (IteratorPtr const position = inner_->generic_erase(deviant, first, first);
         !position->generic_sameAs(last);
         position->generic_next(deviant)) {
        elements.push_back(position->generic_value(deviant));
    }
    IteratorPtr result = inner_->generic_erase(deviant, first, last);
    for (Ref const& element : elements) {
        unlink(deviant, element);
    }
    return result;
}

IteratorPtr GenericAssociationSequence::generic_erase(Deviant const& deviant,
                                                      IteratorIntf const* position) {
    internal::OneWrite const write;
    Ref const element = position->generic_value(deviant);
    IteratorPtr result = inner_->generic_erase(deviant, position);
    unlink(deviant, element);
    return result;
}

void GenericAssociationSequence::generic_pop_back(Deviant const& deviant) {
    internal::OneWrite const write;
    if (GenericDeviantSequence* const list = stored()) {
        unlink(deviant, list->takeLast(deviant));
        return;
    }
    Ref const element = inner_->generic_back(deviant);
    inner_->generic_pop_back(deviant);
    unlink(deviant, element);
}

void GenericAssociationSequence::generic_pop_front(Deviant const& deviant) {
    internal::OneWrite const write;
    if (GenericDeviantSequence* const list = stored()) {
        unlink(deviant, list->takeFirst(deviant));
        return;
    }
    Ref const element = inner_->generic_front(deviant);
    inner_->generic_pop_front(deviant);
    unlink(deviant, element);
}

void GenericAssociationSequence::generic_push_back(Deviant const& deviant, Ref element) {
    internal::OneWrite const write;
    if (GenericDeviantSequence* const list = stored()) {
        requireSameModel(deviant, element);
        if (list->appendNew(deviant, element, true)) {
            linkInserted(deviant, element);
        }
    } else if (isNew(deviant, element)) {
        inner_->generic_push_back(deviant, element);
        linkInserted(deviant, element);
    }
}

void GenericAssociationSequence::generic_push_front(Deviant const& deviant, Ref element) {
    internal::OneWrite const write;
    if (isNew(deviant, element)) {
        inner_->generic_push_front(deviant, element);
        linkInserted(deviant, element);
    }
}

void GenericAssociationSequence::generic_replace(Deviant const& deviant, int index, Ref element) {
    internal::OneWrite const write;
    Ref const old = inner_->generic_at(deviant, index);
    if (!isNew(deviant, element)) {
        return;
    }
    inner_->generic_replace(deviant, index, element);
    try {
        link(deviant, element);
    } catch (...) {
        inner_->generic_replace(deviant, index, old);
        throw;
    }
    unlink(deviant, old);
}

int GenericAssociationSequence::generic_removeAll(Deviant const& deviant, Ref element) {
    internal::OneWrite const write;
    int const removed = inner_->generic_removeAll(deviant, element);
    if (removed != 0) {
        unlink(deviant, element);
    }
    return removed;
}

} // namespace QOB
