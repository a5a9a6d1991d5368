#include "support/allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> count{0};
std::atomic<std::size_t> bytes{0};

void* counted(void* memory) {
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    count.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(malloc_usable_size(memory), std::memory_order_relaxed);
    return memory;
}

void release(void* memory) noexcept {
    bytes.fetch_sub(malloc_usable_size(memory), std::memory_order_relaxed);
    std::free(memory);
}

} // namespace

std::size_t VelumTest::allocationCount() noexcept {
    return count.load(std::memory_order_relaxed);
}

std::size_t VelumTest::allocatedBytes() noexcept {
    return bytes.load(std::memory_order_relaxed);
}

// The array forms of the standard library come here as well.
void* operator new(std::size_t size) {
    return counted(std::malloc(size == 0 ? 1 : size));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    auto const boundary = static_cast<std::size_t>(alignment);
    return counted(std::aligned_alloc(boundary, (size + boundary - 1) / boundary * boundary));
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    release(memory);
}
