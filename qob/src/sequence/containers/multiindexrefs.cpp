#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "qob/qob/assert.h"

#include <string>
#include <typeinfo>
#include <utility>

namespace QOB::MultiIndexImplInternal {

using Generic::IteratorPtr;
using Generic::objectRefIn;
using Generic::Ref;
using Refs = MultiIndexImplForRefs<true, ReferenceKey>;

void failNullElement(char const* sequenceName) {
    std::string const text = std::string("null object while inserting into ") + sequenceName;
    internal::failAt(__FILE__, __LINE__, text.c_str());
}

/// A position in the storage, and a copy of it that keeps what the position is in.
class Refs::Iterator final : public IteratorProxy {
public:
    Iterator(ReferenceStorage seen, ReferenceStorage::const_iterator const& position) noexcept
        : seen_(std::move(seen)), position_(position) {}

    ReferenceStorage const& seen() const noexcept { return seen_; }
    ReferenceStorage::const_iterator const& position() const noexcept { return position_; }

    Ref generic_value(Deviant const& deviant) const override {
        internal::checkNotAtEnd(position_.atEnd());
        return objectRefIn(*position_, deviant);
    }
    void generic_next(Deviant const&) override {
        internal::checkNotAtEnd(position_.atEnd());
        ++position_;
    }
    void generic_prev(Deviant const&) override {
        internal::checkNotAtBegin(position_.atBegin());
        --position_;
    }
    IteratorPtr generic_clone() const override { return std::make_unique<Iterator>(*this); }
    bool generic_sameAs(IteratorIntf const* other) const override {
        if (other == nullptr || typeid(*other) != typeid(Iterator)) {
            return false;
        }
        auto const& there = static_cast<Iterator const*>(other)->position_;
        if (position_ == there) {
            return true;
        }
        bool const atEnd = position_.atEnd();
        return atEnd == there.atEnd() && (atEnd || *position_ == *there);
    }

    static Iterator const& own(IteratorIntf const* position) {
        auto const* const own = dynamic_cast<Iterator const*>(position);
        internal::checkPlace(own != nullptr && !own->isUsedUp_);
        return *own;
    }
    /// Before a write at the position, so that the write needn't go to a copy for its sake.
    static void useUp(IteratorIntf const* position) {
        auto const* const own = static_cast<Iterator const*>(position);
        own->isUsedUp_ = true;
        own->position_ = {};
        own->seen_ = {};
    }

private:
    mutable ReferenceStorage seen_;
    mutable ReferenceStorage::const_iterator position_;
    mutable bool isUsedUp_ = false;
};

Refs::MultiIndexImplForRefs(MultiIndexImplForRefs const& other)
    : SequenceIntf(other), storage_(other.storage_), elementCast_(other.elementCast_) {
    belongToState();
}

Refs& Refs::operator=(MultiIndexImplForRefs const& other) {
    storage_ = other.storage_;
    return *this;
}

Refs::~MultiIndexImplForRefs() = default;

bool Refs::has(NSInterface::ClassObjectIntf* object) const {
    return has(object, nullptr);
}

bool Refs::has(NSInterface::ClassObjectIntf* object, ElementCast known) const {
    if (storage_.contains(object)) {
        return true;
    }
    if (elementCast_ != known) {
        elementCast_(object);
    }
    return false;
}

bool Refs::appendIfNew(NSInterface::ClassObjectIntf* object, ElementCast known) {
    if (elementCast_ != known) {
        elementCast_(object);
    }
    return storage_.insert(storage_.size(), object);
}

bool Refs::eraseIfThere(NSInterface::ClassObjectIntf* object, ElementCast known) {
    if (storage_.erase(object)) {
        return true;
    }
    if (elementCast_ != known) {
        elementCast_(object);
    }
    return false;
}

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
    return std::make_unique<Iterator>(storage_, storage_.begin());
}

IteratorPtr Refs::generic_end(Deviant const&) const {
    return std::make_unique<Iterator>(storage_, storage_.end());
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

std::size_t Refs::indexOf(IteratorIntf const* position) const {
    Iterator const& own = Iterator::own(position);
    if (own.seen().shares(storage_)) {
        return storage_.indexOf(own.position());
    }
    if (own.position().atEnd()) {
        return storage_.size();
    }
    std::size_t const index = storage_.indexOf(*own.position());
    internal::checkPlace(index != ReferenceStorage::NotFound);
    return index;
}

IteratorPtr Refs::generic_insert(Deviant const&, IteratorIntf const* position, Ref element) {
    auto* const object = elementCast_(element.data);
    std::size_t index = indexOf(position);
    if (std::size_t const present = storage_.indexOf(object);
        present != ReferenceStorage::NotFound) {
        index = present;
    } else {
        Iterator::useUp(position);
        storage_.insert(index, object);
    }
    return std::make_unique<Iterator>(storage_, storage_.iteratorAt(index));
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
    std::size_t const begin = indexOf(first);
    std::size_t const end = indexOf(last);
    internal::checkRange(begin <= end);
    if (begin != end) {
        Iterator::useUp(first);
        Iterator::useUp(last);
        storage_.eraseRange(begin, end - begin);
    }
    return std::make_unique<Iterator>(storage_, storage_.iteratorAt(begin));
}

IteratorPtr Refs::generic_erase(Deviant const&, IteratorIntf const* position) {
    std::size_t const index = indexOf(position);
    internal::checkNotAtEnd(index == storage_.size());
    Iterator::useUp(position);
    storage_.eraseAt(index);
    return std::make_unique<Iterator>(storage_, storage_.iteratorAt(index));
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
    return has(Generic::objectOf(element));
}

int Refs::generic_removeAll(Deviant const&, Ref element) {
    if (storage_.erase(Generic::objectOf(element))) {
        return 1;
    }
    elementCast_(element.data);
    return 0;
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
