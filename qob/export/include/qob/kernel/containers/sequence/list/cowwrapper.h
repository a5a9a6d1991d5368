#pragma once

#include "qob/kernel/immortal.h"

#include <atomic>
#include <cstdint>
#include <utility>
#include <vector>

namespace QOB::Performance {

/// A container that is shared until it is written. All wrappers of a type start with one empty
/// container, so that a list that was never written allocates nothing.
template <class C>
class COWWrapper {
public:
    COWWrapper() : block_(sharedEmpty()) { block_->count.fetch_add(1); }
    COWWrapper(COWWrapper const&) = delete;
    COWWrapper& operator=(COWWrapper const&) = delete;
    virtual ~COWWrapper() { release(block_); }

    C const& read() const noexcept { return block_->container; }
    C& writable() {
        if (block_->snapshots != 0) {
            makeOwn();
        } else {
            ensureUnique();
        }
        return block_->container;
    }
    /// Makes this wrapper the only owner of its block; copies the elements if others share it.
    void ensureUnique() const {
        if (block_->count.load() != 1) {
            makeOwn();
        }
    }
    /// True if no other wrapper shares this block.
    bool isUnique() const noexcept { return block_->count.load() == 1; }

    /// Marks, for the duration of a scope, that positions in the container are in use.
    class Lock {
    public:
        explicit Lock(COWWrapper const& wrapper) noexcept : wrapper_(wrapper) {
            ++wrapper_.lockCount_;
        }
        ~Lock() { --wrapper_.lockCount_; }
        Lock(Lock const&) = delete;
        Lock& operator=(Lock const&) = delete;

    private:
        COWWrapper const& wrapper_;
    };

private:
    struct SharedVector {
        SharedVector() = default;
        explicit SharedVector(C copied) : container(std::move(copied)) {}

        std::atomic<std::int32_t> count{1}; ///< of wrappers
        std::int32_t snapshots = 0;
        C container;
    };

public:
    /// The container as it is now: while a snapshot exists, a write by the wrapper goes to a copy.
    class Snapshot {
    public:
        Snapshot() noexcept = default;
        explicit Snapshot(COWWrapper const& wrapper) noexcept : Snapshot(wrapper.block_) {}
        Snapshot(Snapshot const& other) noexcept : Snapshot(other.block_) {}
        Snapshot& operator=(Snapshot other) noexcept {
            std::swap(block_, other.block_);
            return *this;
        }
        ~Snapshot() {
            if (block_ != nullptr && --block_->snapshots == 0 && block_->count.load() <= 0) {
                delete block_;
            }
        }

        bool isNull() const noexcept { return block_ == nullptr; }
        C const& container() const noexcept { return block_->container; }
        /// True if the wrapper hasn't been written since.
        bool isOf(COWWrapper const& wrapper) const noexcept { return block_ == wrapper.block_; }
        friend bool operator==(Snapshot const& a, Snapshot const& b) noexcept {
            return a.block_ == b.block_;
        }

    private:
        explicit Snapshot(SharedVector* block) noexcept : block_(block) {
            if (block_ != nullptr) {
                ++block_->snapshots;
            }
        }

        SharedVector* block_ = nullptr;
    };

private:
    static void release(SharedVector* block) noexcept {
        if (block->count.fetch_sub(1) <= 1 && block->snapshots == 0) {
            delete block;
        }
    }
    void makeOwn() const {
        auto* const own = new SharedVector(block_->container);
        release(std::exchange(block_, own));
    }

    static SharedVector* sharedEmpty() {
        // Its own count is never released.
        static Immortal<SharedVector> block;
        return &*block;
    }

    mutable SharedVector* block_;
    mutable std::int32_t lockCount_ = 0;
};

template <class C>
class COWWrapperContainer : public COWWrapper<C> {
public:
    std::size_t size() const noexcept { return this->read().size(); }
    bool empty() const noexcept { return this->read().empty(); }
};

template <class C>
class COWWrapperContainerSequential : public COWWrapperContainer<C> {
public:
    using value_type = typename C::value_type;

    value_type const& operator[](std::size_t index) const noexcept { return this->read()[index]; }
};

} // namespace QOB::Performance
