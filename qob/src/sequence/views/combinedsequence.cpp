#include "qob/kernel/containers/sequence/views/combinedsequence.h"

#include <algorithm>

namespace QOB::combined_sequence_internal {

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::Ref;

namespace {

[[noreturn]] void failWrite() {
    internal::failAt(__FILE__,
                     __LINE__,
                     "A combined sequence cannot be written; only a given element can be removed.");
}

/// The parts raise by themselves, where there are any.
void requireThere(Deviant const& deviant) {
    QOB_REQUIRE(deviant.isValid(), "object accessed after its deviant has been removed");
}

} // namespace

/// A part and a position in it; behind the last part at the end. Keeps the combination.
class GenericCombinedSequence::Iterator final : public IteratorProxy {
public:
    explicit Iterator(GenericCombinedSequence const& sequence, std::size_t part) noexcept
        : sequence_(&sequence), part_(part) {}
    Iterator(Iterator const& other)
        : IteratorProxy(other),
          sequence_(other.sequence_),
          part_(other.part_),
          index_(other.index_),
          size_(other.size_),
          position_(other.atEnd() ? nullptr : other.position_->generic_clone()) {}
    Iterator& operator=(Iterator const&) = delete;
    ~Iterator() override = default;

    Ref generic_value(Deviant const& deviant) const override {
        internal::checkNotAtEnd(atEnd());
        return position_->generic_value(deviant);
    }
    void generic_next(Deviant const& deviant) override {
        internal::checkNotAtEnd(atEnd());
        if (index_ + 1 == size_) {
            toPartFrom(part_ + 1, deviant);
        } else {
            position_->generic_next(deviant);
            ++index_;
        }
    }
    void generic_prev(Deviant const& deviant) override {
        if (index_ == 0) {
            toPartBefore(deviant);
        } else {
            position_->generic_prev(deviant);
            --index_;
        }
    }
    IteratorPtr generic_clone() const override { return std::make_unique<Iterator>(*this); }
    bool generic_sameAs(IteratorIntf const* other) const override {
        auto const* const there = dynamic_cast<Iterator const*>(other);
        if (there == nullptr || there->part_ != part_ || there->atEnd() != atEnd()) {
            return false;
        }
        return atEnd() || position_->generic_sameAs(there->position_.get());
    }

    /// To the first element of the first part from `part` on that has one.
    void toPartFrom(std::size_t part, Deviant const& deviant) {
        while (part != parts().size() && parts()[part]->generic_empty(deviant)) {
            ++part;
        }
        if (part == parts().size()) {
            set(part, 0, 0, nullptr);
        } else {
            int const size = parts()[part]->generic_size(deviant);
            set(part, 0, size, parts()[part]->generic_begin(deviant));
        }
    }

private:
    std::vector<Generic::SequencePtr> const& parts() const noexcept { return sequence_->parts_; }
    bool atEnd() const noexcept { return position_ == nullptr; }

    /// To the last element of the next part before this one that has one.
    void toPartBefore(Deviant const& deviant) {
        std::size_t part = part_;
        do {
            internal::checkNotAtBegin(part == 0);
            --part;
        } while (parts()[part]->generic_empty(deviant));
        int const size = parts()[part]->generic_size(deviant);
        IteratorPtr last = parts()[part]->generic_end(deviant);
        last->generic_prev(deviant);
        set(part, size - 1, size, std::move(last));
    }
    void set(std::size_t part, int index, int size, IteratorPtr position) noexcept {
        part_ = part;
        index_ = index;
        size_ = size;
        position_ = std::move(position);
    }

    Generic::SmartPtr<GenericCombinedSequence const, Generic::ReferenceCounted> sequence_;
    std::size_t part_;
    int index_ = 0;        ///< in the part
    int size_ = 0;         ///< of the part when the iterator entered it
    IteratorPtr position_; ///< null at the end
};

GenericCombinedSequence::GenericCombinedSequence() = default;
GenericCombinedSequence::~GenericCombinedSequence() = default;

Ref GenericCombinedSequence::generic_at(Deviant const& deviant, int index) const {
    requireThere(deviant);
    int rest = index;
    for (Generic::SequencePtr const& part : parts_) {
        int const size = part->generic_size(deviant);
        if (rest >= 0 && rest < size) {
            return part->generic_at(deviant, rest);
        }
        rest -= size;
    }
    internal::checkElementIndex(index, index - rest); // raises: the index is in no part
    return {};
}

Ref GenericCombinedSequence::generic_front(Deviant const& deviant) const {
    internal::checkNotEmpty(generic_empty(deviant));
    return generic_at(deviant, 0);
}

Ref GenericCombinedSequence::generic_back(Deviant const& deviant) const {
    internal::checkNotEmpty(generic_empty(deviant));
    return generic_at(deviant, generic_size(deviant) - 1);
}

IteratorPtr GenericCombinedSequence::generic_begin(Deviant const& deviant) const {
    requireThere(deviant);
    auto result = std::make_unique<Iterator>(*this, 0);
    result->toPartFrom(0, deviant);
    return result;
}

IteratorPtr GenericCombinedSequence::generic_end(Deviant const& deviant) const {
    requireThere(deviant);
    return std::make_unique<Iterator>(*this, parts_.size());
}

int GenericCombinedSequence::generic_size(Deviant const& deviant) const {
    requireThere(deviant);
    int sum = 0;
    for (Generic::SequencePtr const& part : parts_) {
        sum += part->generic_size(deviant);
    }
    return sum;
}

bool GenericCombinedSequence::generic_empty(Deviant const& deviant) const {
    requireThere(deviant);
    return std::ranges::all_of(
        parts_, [&](Generic::SequencePtr const& part) { return part->generic_empty(deviant); });
}

bool GenericCombinedSequence::generic_contains(Deviant const& deviant, Ref element) const {
    requireThere(deviant);
    return std::ranges::any_of(parts_, [&](Generic::SequencePtr const& part) {
        return part->generic_contains(deviant, element);
    });
}

char const* GenericCombinedSequence::generic_getLumvoName(bool, bool, char const* fallback) const {
    return fallback;
}

int GenericCombinedSequence::generic_removeAll(Deviant const& deviant, Ref element) {
    requireThere(deviant);
    int removed = 0;
    for (Generic::SequencePtr const& part : parts_) {
        removed += part->generic_removeAll(deviant, element);
    }
    return removed;
}

void GenericCombinedSequence::generic_clear(Deviant const&) {
    failWrite();
}
IteratorPtr GenericCombinedSequence::generic_insert(Deviant const&, IteratorIntf const*, Ref) {
    failWrite();
}
void GenericCombinedSequence::generic_insert(Deviant const&, int, Ref) {
    failWrite();
}
void GenericCombinedSequence::generic_erase(Deviant const&, int) {
    failWrite();
}
IteratorPtr
GenericCombinedSequence::generic_erase(Deviant const&, IteratorIntf const*, IteratorIntf const*) {
    failWrite();
}
IteratorPtr GenericCombinedSequence::generic_erase(Deviant const&, IteratorIntf const*) {
    failWrite();
}
void GenericCombinedSequence::generic_pop_back(Deviant const&) {
    failWrite();
}
void GenericCombinedSequence::generic_pop_front(Deviant const&) {
    failWrite();
}
void GenericCombinedSequence::generic_push_back(Deviant const&, Ref) {
    failWrite();
}
void GenericCombinedSequence::generic_push_front(Deviant const&, Ref) {
    failWrite();
}
void GenericCombinedSequence::generic_replace(Deviant const&, int, Ref) {
    failWrite();
}

} // namespace QOB::combined_sequence_internal
