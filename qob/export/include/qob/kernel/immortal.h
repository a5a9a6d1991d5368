#pragma once

#include "qob/qob/export.h"

#include <cstddef>
#include <new>

namespace QOB {

namespace internal {
/// Registers an object that leaveLibrary destroys if it belongs to the library that is being
/// unloaded.
QOB_EXPORT void noteImmortal(void* object, void (*destroy)(void*));
} // namespace internal

/// A static that outlives all others of its library, because states are read until the very end.
/// leaveLibrary destroys it; in a library that doesn't call leaveLibrary, it is never destroyed.
template <class T>
class Immortal {
public:
    Immortal() {
        new (memory_) T();
        internal::noteImmortal(memory_, [](void* object) { static_cast<T*>(object)->~T(); });
    }
    Immortal(Immortal const&) = delete;
    Immortal& operator=(Immortal const&) = delete;

    T& operator*() noexcept { return *std::launder(reinterpret_cast<T*>(memory_)); }

private:
    alignas(T) std::byte memory_[sizeof(T)];
};

} // namespace QOB
