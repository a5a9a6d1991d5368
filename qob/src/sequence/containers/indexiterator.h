#pragma once

#include "qob/kernel/containers/sequence/ref.h"
#include "qob/kernel/containers/sequence/sequenceproxy.h"

#include <memory>
#include <utility>

namespace QOB::internal {

/// An iterator over a sequence of values: an index in its container, which `Seen` keeps as it was.
/// `Self` has
///
///     bool atEnd() const;
///     T const& value() const;             the element; not at the end
///     bool standsWhere(Self const&) const; both at an element, of containers that may differ
template <class Self, class Seen, class Index>
class IndexIterator : public IteratorProxy {
public:
    IndexIterator(Seen seen, Index index) noexcept : seen_(std::move(seen)), index_(index) {}

    Seen const& seen() const noexcept { return seen_; }
    Index index() const noexcept { return index_; }

    Generic::Ref generic_value(Deviant const&) const override {
        checkNotAtEnd(self().atEnd());
        return Generic::toRef(self().value());
    }
    void generic_next(Deviant const&) override {
        checkNotAtEnd(self().atEnd());
        ++index_;
    }
    void generic_prev(Deviant const&) override {
        checkNotAtBegin(index_ == 0);
        --index_;
    }
    Generic::IteratorPtr generic_clone() const override { return std::make_unique<Self>(self()); }
    bool generic_sameAs(Generic::IteratorIntf const* other) const override {
        auto const* const there = dynamic_cast<Self const*>(other);
        if (there == nullptr) {
            return false;
        }
        if (seen_ == there->seen_) {
            return index_ == there->index_;
        }
        return self().atEnd() == there->atEnd() && (self().atEnd() || self().standsWhere(*there));
    }

    static Self const& own(Generic::IteratorIntf const* position) {
        auto const* const own = dynamic_cast<Self const*>(position);
        checkPlace(own != nullptr && !own->isUsedUp_);
        return *own;
    }
    /// Before a write at the position, so that the write needn't go to a copy for its sake.
    static void useUp(Generic::IteratorIntf const* position) noexcept {
        auto const* const own = static_cast<Self const*>(position);
        own->isUsedUp_ = true;
        own->index_ = 0;
        own->seen_ = {};
    }

private:
    Self const& self() const noexcept { return static_cast<Self const&>(*this); }

    mutable Seen seen_;
    mutable Index index_;
    mutable bool isUsedUp_ = false;
};

} // namespace QOB::internal
