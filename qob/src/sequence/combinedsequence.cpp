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

} // namespace

/// A part and a position in it; behind the last part at the end. Keeps the combination.
class GenericCombinedSequence::Iterator final : public IteratorProxy {
public:
    Iterator(GenericCombinedSequence const& sequence,
             std::size_t part,
             IteratorPtr position,
             IteratorPtr end) noexcept
        : sequence_(&sequence), part_(part), position_(std::move(position)), end_(std::move(end)) {}

    Ref generic_value(Deviant const& deviant) const override {
        return position_->generic_value(deviant);
    }
    void generic_next(Deviant const& deviant) override {
        position_->generic_next(deviant);
        if (position_->generic_sameAs(end_.get())) {
            ++part_;
            enterNext(deviant);
        }
    }
    void generic_prev(Deviant const& deviant) override {
        if (position_ == nullptr ||
            position_->generic_sameAs(parts()[part_]->generic_begin(deviant).get())) {
            do {
                --part_;
            } while (parts()[part_]->generic_empty(deviant));
            end_ = parts()[part_]->generic_end(deviant);
            position_ = end_->generic_clone();
        }
        position_->generic_prev(deviant);
    }
    IteratorPtr generic_clone() const override {
        return std::make_unique<Iterator>(*sequence_,
                                          part_,
                                          position_ ? position_->generic_clone() : nullptr,
                                          end_ ? end_->generic_clone() : nullptr);
    }
    bool generic_sameAs(IteratorIntf const* other) const override {
        auto const* const same = dynamic_cast<Iterator const*>(other);
        if (same == nullptr || same->sequence_.get() != sequence_.get() || same->part_ != part_) {
            return false;
        }
        return position_ == nullptr || position_->generic_sameAs(same->position_.get());
    }

    /// From the begin of `part_` on to the first part that isn't empty.
    void enterNext(Deviant const& deviant) {
        while (part_ != parts().size() && parts()[part_]->generic_empty(deviant)) {
            ++part_;
        }
        bool const atEnd = part_ == parts().size();
        position_ = atEnd ? nullptr : parts()[part_]->generic_begin(deviant);
        end_ = atEnd ? nullptr : parts()[part_]->generic_end(deviant);
    }

private:
    std::vector<Generic::SequencePtr> const& parts() const noexcept { return sequence_->parts_; }

    Generic::SmartPtr<GenericCombinedSequence const, Generic::ReferenceCounted> sequence_;
    std::size_t part_;
    IteratorPtr position_; ///< null at the end
    IteratorPtr end_;      ///< of the part
};

GenericCombinedSequence::GenericCombinedSequence() = default;
GenericCombinedSequence::~GenericCombinedSequence() = default;

Ref GenericCombinedSequence::generic_at(Deviant const& deviant, int index) const {
    QOB_REQUIRE(index >= 0, "sequence index must be positive");
    for (Generic::SequencePtr const& part : parts_) {
        int const size = part->generic_size(deviant);
        if (index < size) {
            return part->generic_at(deviant, index);
        }
        index -= size;
    }
    internal::failAt(__FILE__, __LINE__, "sequence index out of bounds");
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
    auto result = std::make_unique<Iterator>(*this, 0, nullptr, nullptr);
    result->enterNext(deviant);
    return result;
}

IteratorPtr GenericCombinedSequence::generic_end(Deviant const&) const {
    return std::make_unique<Iterator>(*this, parts_.size(), nullptr, nullptr);
}

int GenericCombinedSequence::generic_size(Deviant const& deviant) const {
    int sum = 0;
    for (Generic::SequencePtr const& part : parts_) {
        sum += part->generic_size(deviant);
    }
    return sum;
}

bool GenericCombinedSequence::generic_empty(Deviant const& deviant) const {
    return std::ranges::all_of(
        parts_, [&](Generic::SequencePtr const& part) { return part->generic_empty(deviant); });
}

bool GenericCombinedSequence::generic_contains(Deviant const& deviant, Ref element) const {
    return std::ranges::any_of(parts_, [&](Generic::SequencePtr const& part) {
        return part->generic_contains(deviant, element);
    });
}

char const* GenericCombinedSequence::generic_getLumvoName(bool, bool, char const* fallback) const {
    return fallback;
}

int GenericCombinedSequence::generic_removeAll(Deviant const& deviant, Ref element) {
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
