#include "sequence/storage/index.h"

#include "sequence/storage/directory.h"

#include <memory>
#include <new>

namespace QOB {

namespace {
/// A record of changes shorter than this is always worth keeping.
constexpr std::size_t ShortLog = 64;
} // namespace

void ReferenceStorage::Index::Share::join(Index& index, std::size_t position) noexcept {
    index_ = &index;
    position_ = position;
    previous_ = nullptr;
    next_ = index.shares;
    if (next_ != nullptr) {
        next_->previous_ = this;
    }
    index.shares = this;
}

void ReferenceStorage::Index::Share::leave() noexcept {
    if (index_ == nullptr) {
        return;
    }
    (previous_ != nullptr ? previous_->next_ : index_->shares) = next_;
    if (next_ != nullptr) {
        next_->previous_ = previous_;
    }
    if (index_->shares == nullptr) {
        delete index_;
    }
    index_ = nullptr;
    previous_ = nullptr;
    next_ = nullptr;
}

template <class Condition>
void ReferenceStorage::Index::Share::dismissOthers(Condition const& condition) noexcept {
    for (Share* share = index_->shares; share != nullptr;) {
        Share* const next = share->next_;
        if (share != this && condition(*share)) {
            share->leave();
        }
        share = next;
    }
}

void ReferenceStorage::Index::Share::build(Directory const& directory) {
    auto fresh = std::make_unique<Index>();
    fresh->map.reserve(std::size_t{2} * directory.size);
    for (std::uint32_t const slot : directory.order) {
        Chunk const& chunk = *directory.slots[slot];
        for (std::uint32_t i = 0; i < chunk.size; ++i) {
            fresh->map.emplace(chunk.elements()[i], slot);
        }
    }
    leave();
    join(*fresh.release(), 0);
}

/// Many long ways between two lists that are both in use end with an index for each.
void ReferenceStorage::Index::Share::bringHere(Directory const& directory) {
    if (index_ == nullptr) {
        build(directory);
        return;
    }
    index_->travelled +=
        index_->current > position_ ? index_->current - position_ : position_ - index_->current;
    if (index_->travelled > index_->map.size() + ShortLog) {
        build(directory);
        return;
    }
    while (index_->current > position_) {
        cross(index_->log[index_->current - 1]);
        --index_->current;
    }
    while (index_->current < position_) {
        cross(index_->log[index_->current]);
        ++index_->current;
    }
}

void ReferenceStorage::Index::Share::cross(Step& step) {
    std::uint32_t const slot = slotOf(step.element);
    if (step.slotBeyond == storage::NoSlot) {
        index_->map.erase(step.element);
    } else {
        index_->map.insert_or_assign(step.element, step.slotBeyond);
    }
    step.slotBeyond = slot;
}

void ReferenceStorage::Index::Share::beginChange(Directory const& directory) {
    if (index_ == nullptr) {
        return;
    }
    ensure(directory);
    if (isOnly()) {
        forgetLog();
    } else if (index_->log.size() > position_) {
        dismissOthers([this](Share const& other) { return other.position_ > position_; });
        index_->log.resize(position_, {});
    }
}

void ReferenceStorage::Index::Share::forgetLog() noexcept {
    index_->log.clear();
    index_->current = 0;
    index_->travelled = 0;
    position_ = 0;
}

void ReferenceStorage::Index::Share::record(Element element, std::uint32_t slotBefore) noexcept {
    if (index_->log.size() <= index_->map.size() + ShortLog) {
        try {
            index_->log.push_back({element, slotBefore});
            position_ = index_->current = index_->log.size();
            return;
        } catch (std::bad_alloc const&) {
            // Without the note the others can't come back to their state.
        }
    }
    dismissOthers([](Share const&) { return true; });
    forgetLog();
}

} // namespace QOB
