#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace velum::arxml {

/// An array that only grows, in blocks: growing moves no element, so that no memory is touched
/// twice.
template <typename T>
class BlockArray {
public:
    std::size_t size() const { return size_; }
    T& operator[](std::size_t index) { return (*blocks_[index / blockSize])[index % blockSize]; }
    T const& operator[](std::size_t index) const {
        return (*blocks_[index / blockSize])[index % blockSize];
    }

    void push_back(T const& element) {
        if (size_ % blockSize == 0) {
            blocks_.push_back(std::make_unique_for_overwrite<Block>());
        }
        (*this)[size_++] = element;
    }

private:
    static constexpr std::size_t blockSize = 1024;
    using Block = std::array<T, blockSize>;

    std::vector<std::unique_ptr<Block>> blocks_;
    std::size_t size_ = 0;
};

} // namespace velum::arxml
