#pragma once

#include "qob/qob/refbase.h"

#include <utility>

namespace QOB {

/// A reference as a field of a state: a counted pointer to an interface class, without a deviant.
/// Stores before it releases, so that code triggered by the release sees the new value.
template <class Intf>
class CountedPointer {
public:
    CountedPointer() noexcept = default;
    explicit CountedPointer(Intf* pointer) noexcept : pointer_(pointer) { retain(); }
    CountedPointer(CountedPointer const& other) noexcept : pointer_(other.pointer_) { retain(); }
    CountedPointer(CountedPointer&& other) noexcept
        : pointer_(std::exchange(other.pointer_, nullptr)) {}
    CountedPointer& operator=(CountedPointer other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    ~CountedPointer() {
        if (pointer_ != nullptr) {
            internal::release(internal::countedBase(pointer_));
        }
    }

    Intf* get() const noexcept { return pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

private:
    void retain() const noexcept {
        if (pointer_ != nullptr) {
            internal::retain(internal::countedBase(pointer_));
        }
    }

    Intf* pointer_ = nullptr;
};

} // namespace QOB
