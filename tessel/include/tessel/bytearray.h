#pragma once

#include "tessel/export.h"

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Tessel {

/// A string of bytes, ordered like text by its bytes as unsigned numbers.
class TESSEL_EXPORT ByteArray {
public:
    ByteArray() noexcept = default;
    explicit ByteArray(std::vector<std::byte> bytes) noexcept;

    /// The bytes of a narrow text, without a terminator.
    static ByteArray fromText(std::string_view text);
    /// The bytes as a narrow text, unchecked.
    std::string toText() const;

    bool empty() const noexcept { return bytes_.empty(); }
    std::size_t size() const noexcept { return bytes_.size(); }
    std::byte const* data() const noexcept { return bytes_.data(); }
    std::byte const* begin() const noexcept { return bytes_.data(); }
    std::byte const* end() const noexcept { return bytes_.data() + bytes_.size(); }
    /// `index` must be below the size.
    std::byte operator[](std::size_t index) const noexcept { return bytes_[index]; }

    friend bool operator==(ByteArray const&, ByteArray const&) = default;
    friend std::strong_ordering operator<=>(ByteArray const&, ByteArray const&) = default;

private:
    std::vector<std::byte> bytes_;
};

} // namespace Tessel
