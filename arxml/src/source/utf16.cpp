#include "source/utf16.h"

namespace velum::arxml {

namespace {

constexpr std::uint32_t byteOrderMark16 = 0xFEFF;
constexpr std::uint32_t firstHigh = 0xD800;
constexpr std::uint32_t firstLow = 0xDC00;
constexpr std::uint32_t behindLow = 0xE000;

void appendUtf8(std::uint32_t character, std::string& text) {
    const auto continuation = [](std::uint32_t bits) {
        return static_cast<char>(0x80U | (bits & 0x3FU));
    };
    if (character < 0x80U) {
        text += static_cast<char>(character);
    } else if (character < 0x800U) {
        text += static_cast<char>(0xC0U | (character >> 6U));
        text += continuation(character);
    } else if (character < 0x10000U) {
        text += static_cast<char>(0xE0U | (character >> 12U));
        text += continuation(character >> 6U);
        text += continuation(character);
    } else {
        text += static_cast<char>(0xF0U | (character >> 18U));
        text += continuation(character >> 12U);
        text += continuation(character >> 6U);
        text += continuation(character);
    }
}

} // namespace

std::optional<Utf16Decoder::ByteOrder> Utf16Decoder::detect(std::string_view start) {
    const auto beginsWith = [start](std::string_view bytes) {
        return start.substr(0, bytes.size()) == bytes;
    };
    using namespace std::string_view_literals;
    if (beginsWith("\xFF\xFE"sv) && !beginsWith("\xFF\xFE\0\0"sv)) {
        return ByteOrder::littleEndian;
    }
    if (beginsWith("\xFE\xFF"sv)) {
        return ByteOrder::bigEndian;
    }
    // Without a mark: a '<' and one more character of ASCII. UTF-32 has two zeros there.
    if (start.size() >= 4 && beginsWith("<\0"sv) && start[2] != '\0' && start[3] == '\0') {
        return ByteOrder::littleEndian;
    }
    if (start.size() >= 4 && beginsWith("\0<\0"sv) && start[3] != '\0') {
        return ByteOrder::bigEndian;
    }
    return std::nullopt;
}

bool Utf16Decoder::decode(std::string_view bytes, std::string& text) {
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (!firstByte_) {
            firstByte_ = byte;
            continue;
        }
        const std::uint32_t first = *firstByte_;
        firstByte_.reset();
        const std::uint32_t unit = order_ == ByteOrder::littleEndian
                                       ? first | (std::uint32_t{byte} << 8U)
                                       : (first << 8U) | byte;
        if (!takeUnit(unit, text)) {
            return false;
        }
    }
    return true;
}

bool Utf16Decoder::takeUnit(std::uint32_t unit, std::string& text) {
    const bool isMark = isStart_ && unit == byteOrderMark16;
    isStart_ = false;
    const bool isHigh = unit >= firstHigh && unit < firstLow;
    const bool isLow = unit >= firstLow && unit < behindLow;
    if (isLow != (high_ != 0)) {
        return false;
    }
    if (isHigh) {
        high_ = unit;
    } else if (isLow) {
        appendUtf8(0x10000U + ((high_ - firstHigh) << 10U) + (unit - firstLow), text);
        high_ = 0;
    } else if (!isMark) {
        appendUtf8(unit, text);
    }
    return true;
}

} // namespace velum::arxml
