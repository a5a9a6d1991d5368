#include "tessel/bytearray.h"

#include <algorithm>
#include <utility>

namespace Tessel {

ByteArray::ByteArray(std::vector<std::byte> bytes) noexcept : bytes_(std::move(bytes)) {
}

ByteArray ByteArray::fromText(std::string_view text) {
    std::vector<std::byte> bytes(text.size());
    std::transform(
        text.begin(), text.end(), bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
    return ByteArray(std::move(bytes));
}

std::string ByteArray::toText() const {
    std::string text(bytes_.size(), '\0');
    std::transform(bytes_.begin(), bytes_.end(), text.begin(), [](std::byte b) {
        return static_cast<char>(b);
    });
    return text;
}

} // namespace Tessel
