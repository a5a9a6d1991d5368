#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <sys/mman.h>

namespace velum::arxml {

/// Memory for the bytes of a file. It isn't cleared, and it lies in large pages where the system
/// has them: handing out a few large pages takes a fraction of the time of many small ones.
class LargeBuffer {
public:
    char* data() { return bytes_.get(); }
    char const* data() const { return bytes_.get(); }
    std::size_t size() const { return size_; }

    /// What is added has no value yet.
    void resize(std::size_t size) {
        if (size > capacity_) {
            reserve(std::max(size, capacity_ + capacity_ / 2));
        }
        size_ = size;
    }

    void reserve(std::size_t capacity) {
        capacity = (capacity + pageSize - 1) / pageSize * pageSize;
        if (capacity <= capacity_) {
            return;
        }
        Bytes bytes(static_cast<char*>(std::aligned_alloc(pageSize, capacity)));
        if (bytes == nullptr) {
            throw std::bad_alloc();
        }
        // Only a hint: smaller pages serve too.
        static_cast<void>(madvise(bytes.get(), capacity, MADV_HUGEPAGE));
        if (size_ > 0) {
            std::memcpy(bytes.get(), bytes_.get(), size_);
        }
        bytes_ = std::move(bytes);
        capacity_ = capacity;
    }

private:
    static constexpr std::size_t pageSize = std::size_t(2) << 20U;

    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };
    using Bytes = std::unique_ptr<char, Free>;

    Bytes bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace velum::arxml
