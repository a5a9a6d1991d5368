#include "qob/kernel/containers/sequence/views/deviantsequence.h"

#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "qob/kernel/deviant/onewrite.h"
#include "qob/kernel/property/reference.h"
#include "qob/qob/nsinterface/classobjectintf.h"

namespace QOB {

using Generic::IteratorPtr;
using Generic::objectOf;
using Generic::Ref;
using Generic::SequenceRef;
using References =
    MultiIndexImplInternal::MultiIndexImplForRefs<true, MultiIndexImplInternal::ReferenceKey>;

namespace {

bool isObject(Ref const& element) noexcept {
    return element.data != nullptr && element.equalFn == nullptr;
}

/// Where an iterator, which may be older, stands in the sequence; raises if nowhere.
IteratorPtr placeIn(SequenceRef const& sequence, Generic::IteratorIntf const* position) {
    return sequence.generic_erase(position, position); // nothing
}

/// The objects from one position of a sequence to another; nothing for values. Raises if there is
/// no way from the first to the last.
std::vector<Ref> objectsBetween(SequenceRef const& sequence,
                                Generic::IteratorIntf const* first,
                                Generic::IteratorIntf const* last) {
    std::vector<Ref> objects;
    bool areObjects = true;
    for (IteratorPtr const position = placeIn(sequence, first); !position->generic_sameAs(last);
         position->generic_next(sequence.getDeviant())) {
        if (!areObjects) {
            continue;
        }
        Ref element = position->generic_value(sequence.getDeviant());
        areObjects = element.equalFn == nullptr;
        if (areObjects) {
            objects.push_back(std::move(element));
        }
    }
    return objects;
}

} // namespace

GenericDeviantSequence::GenericDeviantSequence(NSInterface::ObjectIntf* object,
                                               Deviant const& deviant,
                                               IntrospectiveMethods const* methods,
                                               unsigned propertyId)
    : object_(object), deviant_(deviant), methods_(methods), propertyId_(propertyId) {
}

GenericDeviantSequence::~GenericDeviantSequence() = default;

Deviant GenericDeviantSequence::own(Deviant const& deviant) const {
    return deviant.inModelOf(internal::rootDeviantOf(object_.get()));
}

SequenceRef GenericDeviantSequence::reading(Deviant const& deviant) const {
    NSInterface::ObjectIntf* const state = object_->getReadDeviantI(deviant, object_.get());
    SequenceRef result = methods_->getMultiValued(state, deviant, propertyId_, false);
    result.access();
    return result;
}

SequenceRef GenericDeviantSequence::writing(Deviant const& deviant) {
    NSInterface::ObjectIntf* const state = object_->getWriteDeviantI(deviant, object_.get());
    SequenceRef result = methods_->getOnlyMultiValued(state, deviant, propertyId_, false);
    result.access();
    return result;
}

/// True for an object of the same model in the model's root: a list notes nothing about it.
bool GenericDeviantSequence::isAtHome(Deviant const& deviant, Ref const& element) const {
    Deviant const root = internal::rootDeviantOf(object_.get());
    return deviant == root && element.deviant == root &&
           internal::rootDeviantOf(objectOf(element)) == root;
}

void GenericDeviantSequence::gain(Deviant const& deviant, Ref const& element) const {
    if (isObject(element) && !isAtHome(deviant, element)) {
        own(deviant).setOrAddReferred(element.deviant, methods_, propertyId_);
        exchange(deviant, nullptr, objectOf(element));
    }
}

void GenericDeviantSequence::lose(Deviant const& deviant, Ref const& element) const {
    if (isObject(element) && !isAtHome(deviant, element)) {
        own(deviant).removeReferred(element.deviant, methods_, propertyId_);
        exchange(deviant, objectOf(element), nullptr);
    }
}

void GenericDeviantSequence::loseAll(Deviant const& deviant,
                                     std::vector<Ref> const& elements) const {
    for (Ref const& element : elements) {
        lose(deviant, element);
    }
}

void GenericDeviantSequence::exchange(Deviant const& deviant,
                                      NSInterface::ClassObjectIntf* old,
                                      NSInterface::ClassObjectIntf* value) const {
    using NSInterface::ClassObjectIntf;
    if (internal::rootDeviantOf(old != nullptr ? old : value) !=
        internal::rootDeviantOf(object_.get())) {
        auto* const state = object_->getWriteDeviantI(own(deviant), object_.get());
        property::exchangeForeign(castObject<ClassObjectIntf>(object_.get()),
                                  castObject<ClassObjectIntf>(state),
                                  old,
                                  value);
    }
}

bool GenericDeviantSequence::isUnique() const noexcept {
    // Empty before the library that declares the property is initialized.
    MetaPropertyDescription const* const property =
        methods_->properties != nullptr ? methods_->properties[propertyId_] : nullptr;
    return property != nullptr && (property->flags & PropertyUnique) != 0;
}

bool GenericDeviantSequence::refuses(Deviant const& deviant, Ref const& element) const {
    return isUnique() && has(deviant, element);
}

bool GenericDeviantSequence::has(Deviant const& deviant, Ref const& element) const {
    SequenceRef const source = reading(deviant);
    References const* const references = References::of(source.get());
    return references != nullptr && element.equalFn == nullptr ? references->has(objectOf(element))
                                                               : source.generic_contains(element);
}

bool GenericDeviantSequence::appendNew(Deviant const& deviant, Ref const& element, bool mustExist) {
    NSInterface::ObjectIntf* const state = object_->getReadDeviantI(deviant, object_.get());
    SequenceRef const source = methods_->getMultiValued(state, deviant, propertyId_, false);
    References* const list = References::of(source.access());
    bool const holdsObjects = list != nullptr && element.equalFn == nullptr;
    if (holdsObjects && element.data != nullptr && !list->storage().empty() &&
        isAtHome(deviant, element) && deviant.isWritableWithoutChecks() &&
        internal::isThere(objectOf(element), deviant)) {
        // Nothing refuses or records this write, so the list itself finds out what is new.
        return list->appendIfNew(objectOf(element), nullptr);
    }
    if (holdsObjects ? list->has(objectOf(element))
                     : (isUnique() || mustExist) && source.generic_contains(element)) {
        return false;
    }
    if (mustExist && !internal::isThere(objectOf(element), deviant)) {
        objectOf(element)->getReadDeviantI(deviant, object_.get()); // raises
    }
    if (!holdsObjects) {
        writing(deviant).generic_push_back(element);
    } else if (object_->getWriteDeviantI(deviant, object_.get()) == state &&
               !list->storage().empty()) {
        list->storage().append(objectOf(element)); // what is read is what is written
    } else {
        SequenceRef const target = writing(deviant);
        References::of(target.get())->storage().append(objectOf(element));
    }
    gain(deviant, element);
    return true;
}

Ref GenericDeviantSequence::takeFirst(Deviant const& deviant) {
    NSInterface::ObjectIntf* const state = object_->getReadDeviantI(deviant, object_.get());
    SequenceRef const source = methods_->getMultiValued(state, deviant, propertyId_, false);
    Ref element = source.generic_front();
    References* const list = References::of(source.get());
    if (list != nullptr && object_->getWriteDeviantI(deviant, object_.get()) == state) {
        list->storage().eraseAt(0); // what is read is what is written
    } else {
        writing(deviant).generic_pop_front();
    }
    lose(deviant, element);
    return element;
}

Ref GenericDeviantSequence::takeLast(Deviant const& deviant) {
    Ref element = generic_back(deviant);
    writing(deviant).generic_pop_back();
    lose(deviant, element);
    return element;
}

void GenericDeviantSequence::generic_clear(Deviant const& deviant) {
    internal::OneWrite const write;
    SequenceRef const source = reading(deviant);
    if (source.generic_empty()) {
        return;
    }
    std::vector<Ref> const objects =
        objectsBetween(source, source.generic_begin().get(), source.generic_end().get());
    writing(deviant).generic_clear();
    loseAll(deviant, objects);
}

IteratorPtr GenericDeviantSequence::generic_insert(Deviant const& deviant,
                                                   IteratorIntf const* position,
                                                   Ref element) {
    internal::OneWrite const write;
    SequenceRef const source = reading(deviant);
    if (isUnique() && source.generic_contains(element)) {
        // A container that has the element gives its place and changes nothing.
        return source.generic_insert(position, std::move(element));
    }
    placeIn(source, position);
    IteratorPtr result = writing(deviant).generic_insert(position, element);
    gain(deviant, element);
    return result;
}

void GenericDeviantSequence::generic_insert(Deviant const& deviant, int index, Ref element) {
    internal::OneWrite const write;
    internal::checkInsertIndex(index, generic_size(deviant));
    if (!refuses(deviant, element)) {
        writing(deviant).generic_insert(index, element);
        gain(deviant, element);
    }
}

void GenericDeviantSequence::generic_erase(Deviant const& deviant, int index) {
    internal::OneWrite const write;
    internal::checkElementIndex(index, generic_size(deviant));
    Ref const element = generic_at(deviant, index);
    writing(deviant).generic_erase(index);
    lose(deviant, element);
}

IteratorPtr GenericDeviantSequence::generic_erase(Deviant const& deviant,
                                                  IteratorIntf const* first,
                                                  IteratorIntf const* last) {
    internal::OneWrite const write;
    SequenceRef const source = reading(deviant);
    IteratorPtr const end = placeIn(source, last);
    std::vector<Ref> const objects = objectsBetween(source, first, end.get());
    if (first->generic_sameAs(last)) {
        return placeIn(source, first);
    }
    IteratorPtr result = writing(deviant).generic_erase(first, last);
    loseAll(deviant, objects);
    return result;
}

IteratorPtr GenericDeviantSequence::generic_erase(Deviant const& deviant,
                                                  IteratorIntf const* position) {
    internal::OneWrite const write;
    Ref const element = placeIn(reading(deviant), position)->generic_value(deviant);
    IteratorPtr result = writing(deviant).generic_erase(position);
    lose(deviant, element);
    return result;
}

void GenericDeviantSequence::generic_pop_back(Deviant const& deviant) {
    internal::OneWrite const write;
    takeLast(deviant);
}

void GenericDeviantSequence::generic_pop_front(Deviant const& deviant) {
    internal::OneWrite const write;
    takeFirst(deviant);
}

void GenericDeviantSequence::generic_push_back(Deviant const& deviant, Ref element) {
    internal::OneWrite const write;
    appendNew(deviant, element, false);
}

void GenericDeviantSequence::generic_push_front(Deviant const& deviant, Ref element) {
    internal::OneWrite const write;
    if (!refuses(deviant, element)) {
        writing(deviant).generic_push_front(element);
        gain(deviant, element);
    }
}

void GenericDeviantSequence::generic_replace(Deviant const& deviant, int index, Ref element) {
    internal::OneWrite const write;
    Ref const old = generic_at(deviant, index);
    if (!Generic::sameElement(old, element) && !refuses(deviant, element)) {
        writing(deviant).generic_replace(index, element);
        lose(deviant, old);
        gain(deviant, element);
    }
}

int GenericDeviantSequence::generic_removeAll(Deviant const& deviant, Ref element) {
    internal::OneWrite const write;
    if (!has(deviant, element)) {
        return 0;
    }
    int const removed = writing(deviant).generic_removeAll(element);
    for (int rest = removed; rest != 0; --rest) {
        lose(deviant, element);
    }
    return removed;
}

char const* GenericDeviantSequence::generic_getLumvoName(bool immutableSequence,
                                                         bool immutableElements,
                                                         char const* fallback) const {
    return reading(deviant_).generic_getLumvoName(immutableSequence, immutableElements, fallback);
}

} // namespace QOB
