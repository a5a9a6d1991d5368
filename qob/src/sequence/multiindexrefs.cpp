#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "qob/qob/assert.h"

#include <string>

namespace QOB::MultiIndexImplInternal {

using Generic::IteratorPtr;
using Generic::objectRefIn;
using Generic::Ref;
using Refs = MultiIndexImplForRefs<true, ReferenceKey>;

void failNullElement(char const* sequenceName) {
    std::string const text = std::string("null object while inserting into ") + sequenceName;
    internal::failAt(__FILE__, __LINE__, text.c_str());
}

/// A position in the storage.
class Refs::Iterator final : public IteratorProxy {
public:
    explicit Iterator(ReferenceStorage::const_iterator const& position) noexcept
        : position_(position) {}

    static ReferenceStorage::const_iterator const& positionOf(IteratorIntf const* iterator) {
        return static_cast<Iterator const*>(iterator)->position_;
    }

    Ref generic_value(Deviant const& deviant) const override {
        return objectRefIn(*position_, deviant);
    }
    void generic_next(Deviant const&) override { ++position_; }
    void generic_prev(Deviant const&) override { --position_; }
    IteratorPtr generic_clone() const override { return std::make_unique<Iterator>(position_); }
    bool generic_sameAs(IteratorIntf const* other) const override {
        return positionOf(other) == position_;
    }

private:
    ReferenceStorage::const_iterator position_;
};

Refs::MultiIndexImplForRefs(MultiIndexImplForRefs const& other) = default;

Refs& Refs::operator=(MultiIndexImplForRefs const& other) {
    storage_ = other.storage_;
    return *this;
}

Refs::~MultiIndexImplForRefs() = default;

Ref Refs::generic_at(Deviant const& deviant, int index) const {
    internal::checkElementIndex(index, size());
    return objectRefIn(storage_.at(static_cast<std::size_t>(index)), deviant);
}

Ref Refs::generic_front(Deviant const& deviant) const {
    internal::checkNotEmpty(storage_.empty());
    return objectRefIn(storage_.front(), deviant);
}

Ref Refs::generic_back(Deviant const& deviant) const {
    internal::checkNotEmpty(storage_.empty());
    return objectRefIn(storage_.back(), deviant);
}

IteratorPtr Refs::generic_begin(Deviant const&) const {
    return std::make_unique<Iterator>(storage_.begin());
}

IteratorPtr Refs::generic_end(Deviant const&) const {
    return std::make_unique<Iterator>(storage_.end());
}

void Refs::generic_clear(Deviant const&) {
    storage_.clear();
}

int Refs::generic_size(Deviant const&) const {
    return size();
}

bool Refs::generic_empty(Deviant const&) const {
    return storage_.empty();
}

IteratorPtr Refs::generic_insert(Deviant const&, IteratorIntf const* position, Ref element) {
    auto* const object = elementCast_(element.data);
    std::size_t index = storage_.indexOf(Iterator::positionOf(position));
    if (!storage_.insert(index, object)) {
        index = storage_.indexOf(object);
    }
    return std::make_unique<Iterator>(storage_.iteratorAt(index));
}

void Refs::generic_insert(Deviant const&, int index, Ref element) {
    internal::checkInsertIndex(index, size());
    storage_.insert(static_cast<std::size_t>(index), elementCast_(element.data));
}

void Refs::generic_erase(Deviant const&, int index) {
    internal::checkElementIndex(index, size());
    storage_.eraseAt(static_cast<std::size_t>(index));
}

IteratorPtr
Refs::generic_erase(Deviant const&, IteratorIntf const* first, IteratorIntf const* last) {
    std::size_t const begin = storage_.indexOf(Iterator::positionOf(first));
    std::size_t const end = storage_.indexOf(Iterator::positionOf(last));
    storage_.eraseRange(begin, end - begin);
    return std::make_unique<Iterator>(storage_.iteratorAt(begin));
}

IteratorPtr Refs::generic_erase(Deviant const&, IteratorIntf const* position) {
    std::size_t const index = storage_.indexOf(Iterator::positionOf(position));
    storage_.eraseAt(index);
    return std::make_unique<Iterator>(storage_.iteratorAt(index));
}

void Refs::generic_pop_back(Deviant const&) {
    internal::checkNotEmpty(storage_.empty());
    storage_.eraseAt(storage_.size() - 1);
}

void Refs::generic_pop_front(Deviant const&) {
    internal::checkNotEmpty(storage_.empty());
    storage_.eraseAt(0);
}

void Refs::generic_push_back(Deviant const&, Ref element) {
    storage_.push_back(elementCast_(element.data));
}

void Refs::generic_push_front(Deviant const&, Ref element) {
    storage_.push_front(elementCast_(element.data));
}

void Refs::generic_replace(Deviant const&, int index, Ref element) {
    internal::checkElementIndex(index, size());
    auto const place = static_cast<std::size_t>(index);
    ReferenceStorage::Element const old = storage_.at(place);
    auto* const object = elementCast_(element.data);
    if (old == object) {
        return;
    }
    if (!storage_.replaceAt(place, object)) {
        // The old element has been counted down before the index refuses the new one.
        internal::release(static_cast<ReferenceCountingIntf const*>(old));
    }
}

bool Refs::generic_contains(Deviant const&, Ref element) const {
    return storage_.contains(elementCast_(element.data));
}

int Refs::generic_removeAll(Deviant const&, Ref element) {
    return storage_.erase(elementCast_(element.data)) ? 1 : 0;
}

bool Refs::specialized_equal(Deviant const&,
                             SequenceIntf const* other,
                             Deviant const&,
                             bool& handled) const {
    auto const* const same = dynamic_cast<Refs const*>(other);
    if (same == nullptr) {
        return false;
    }
    handled = true;
    return storage_ == same->storage_;
}

bool Refs::specialized_assign(Deviant const& deviant,
                              SequenceIntf const* other,
                              Deviant const&,
                              bool& handled) {
    auto const* const same = dynamic_cast<Refs const*>(other);
    if (same == nullptr) {
        return false;
    }
    handled = true;
    ReferenceStorage copy(same->storage_); // taken first: the other one may be this one
    generic_clear(deviant);
    storage_.swap(copy);
    storage_.ownShortArray();
    return true;
}

} // namespace QOB::MultiIndexImplInternal
