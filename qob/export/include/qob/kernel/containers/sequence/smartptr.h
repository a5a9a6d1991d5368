#pragma once

#include "qob/qob/referencecounting.h"

#include <utility>

namespace QOB::Generic {

/// The ownership policy for objects that the kernel counts.
struct ReferenceCounted {
    static void retain(ReferenceCountingIntf const* object) { internal::retain(object); }
    static void release(ReferenceCountingIntf const* object) { internal::release(object); }
};

/// A pointer that owns its object according to a policy.
template <class T, class Ownership>
class SmartPtr {
public:
    SmartPtr() noexcept = default;
    explicit SmartPtr(T* object) : object_(object) {
        if (object_ != nullptr) {
            Ownership::retain(object_);
        }
    }
    SmartPtr(SmartPtr const& other) : SmartPtr(other.object_) {}
    SmartPtr(SmartPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    SmartPtr& operator=(SmartPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~SmartPtr() {
        if (object_ != nullptr) {
            Ownership::release(object_);
        }
    }

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

private:
    T* object_ = nullptr;
};

} // namespace QOB::Generic
