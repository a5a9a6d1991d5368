#pragma once

#include "qob/qob/assert.h"
#include "qob/qob/deviant.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/referencecounting.h"
#include "qob/qob/rootpart.h"

#include <functional>
#include <type_traits>
#include <utility>

namespace QOB {

namespace internal {

/// The counted base of an interface class, reached by its first base: some classes inherit a base
/// twice.
template <class Intf>
ReferenceCountingIntf const* countedBase(Intf const* pointer) noexcept {
    if constexpr (std::is_convertible_v<Intf const*, ReferenceCountingIntf const*>) {
        return pointer;
    } else {
        return static_cast<typename Intf::PrimaryBase const*>(pointer);
    }
}

} // namespace internal

template <class Pointer>
class RefBase;

/// The handles of an interface class, `Reading` and `Writing`, and the header that declares them,
/// for the error text of an access through an empty one. Specialised with QOB_HANDLES.
template <class Intf>
struct HandlesOf;

/// The base of every handle: a counted pointer to an interface object, and the deviant in which to
/// see the object. Two words. The deviant is not part of a handle's logical value: handles are
/// equal if their objects are the same, and the deviant may be changed through a const handle.
template <class Intf>
class RefBase<Intf*> {
public:
    using Interface = Intf;

    /// True if the handle isn't empty and its object exists in its deviant. Never raises.
    bool isValid() const { return pointer_ != nullptr && internal::isThere(primary(), deviant_); }
    explicit operator bool() const { return isValid(); }

    /// The object, counted by the handle as long as it lives; null if the handle is empty.
    Intf* get() const noexcept { return pointer_; }
    Intf* getImplementation() noexcept { return pointer_; }
    Intf const* getImplementation() const noexcept { return pointer_; }
    Deviant getDeviant() const noexcept { return deviant_; }

    /// Moves the handle to another deviant of its object's model. A deviant of another model is
    /// replaced by the object's own root. A removed deviant is kept, and every access raises. An
    /// empty handle is not changed.
    void setDeviant(Deviant deviant) const {
        if (pointer_ != nullptr) {
            deviant_ = deviant.inModelOf(internal::rootDeviantOf(primary()));
        }
    }

    friend bool operator==(RefBase const& a, RefBase const& b) noexcept {
        return a.pointer_ == b.pointer_;
    }

protected:
    RefBase() noexcept = default;
    RefBase(Intf const* pointer, Deviant deviant) : pointer_(const_cast<Intf*>(pointer)) {
        retain();
        setDeviant(deviant);
    }
    RefBase(RefBase const& other) noexcept : pointer_(other.pointer_), deviant_(other.deviant_) {
        retain();
    }
    RefBase(RefBase&& other) noexcept
        : pointer_(std::exchange(other.pointer_, nullptr)),
          deviant_(std::exchange(other.deviant_, Deviant())) {}
    // Counts the new before the old: NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
    RefBase& operator=(RefBase const& other) {
        assign(other.pointer_);
        deviant_ = other.deviant_;
        return *this;
    }
    /// Leaves the other handle empty and releases this one's old object at once.
    RefBase& operator=(RefBase&& other) noexcept {
        RefBase taken(std::move(other));
        std::swap(pointer_, taken.pointer_);
        std::swap(deviant_, taken.deviant_);
        return *this;
    }
    ~RefBase() {
        if (pointer_ != nullptr) {
            internal::release(internal::countedBase(pointer_));
        }
    }

    /// The object, after the check that there is one.
    Intf* access() const {
        if (pointer_ == nullptr) {
            internal::failAt(HandlesOf<Intf>::file,
                             HandlesOf<Intf>::line,
                             "Cannot access NULL ref. Use isValid() before calling methods");
        }
        return pointer_;
    }

    /// The object as interface class `To`, in the same deviant; empty if it isn't one.
    template <class To>
    To* pointerAs() const {
        return castObject<To>(pointer_);
    }

private:
    /// The object as the kernel knows it. Not as an `Intf`, because its library may have been
    /// unloaded.
    NSInterface::ObjectIntf* primary() const noexcept {
        if constexpr (std::is_convertible_v<Intf*, ReferenceCountingIntf*>) {
            return pointer_;
        } else {
            return static_cast<typename Intf::PrimaryBase*>(pointer_);
        }
    }
    void retain() const noexcept {
        if (pointer_ != nullptr) {
            internal::retain(internal::countedBase(pointer_));
        }
    }
    /// Stores before it releases, so that code triggered by the release sees a complete handle.
    void assign(Intf* pointer) {
        if (pointer_ == pointer) {
            return;
        }
        Intf* const old = std::exchange(pointer_, pointer);
        retain();
        if (old != nullptr) {
            internal::release(internal::countedBase(old));
        }
    }

    Intf* pointer_ = nullptr;
    mutable Deviant deviant_;
};

/// Hashes a handle by its object, consistently with its equality.
template <class Handle>
struct HandleHash {
    std::size_t operator()(Handle const& handle) const noexcept {
        return std::hash<void const*>()(handle.get());
    }
};

} // namespace QOB

/// Names the handles of an interface class, for reading and for writing, and their header. At
/// global scope, between the declarations of the handles and their definitions, with the header's
/// path in its repository:
///
///     QOB_HANDLES(sample::NSInterface::ThingIntf,
///                 sample::ImmutableThing,
///                 sample::Thing,
///                 "sample/include/sample/thing.h")
#define QOB_HANDLES(Intf, ReadingHandle, WritingHandle, path)                                      \
    template <>                                                                                    \
    struct QOB::HandlesOf<Intf> {                                                                  \
        using Reading = ReadingHandle;                                                             \
        using Writing = WritingHandle;                                                             \
        static constexpr char const* file = path;                                                  \
        static constexpr int line = __LINE__;                                                      \
    };
