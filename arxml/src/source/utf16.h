#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velum::arxml {

/// Turns UTF-16 into UTF-8, portion by portion.
class Utf16Decoder {
public:
    enum class ByteOrder { littleEndian, bigEndian };

    /// The byte order of a text that begins with these four bytes or fewer, from its mark or from
    /// the '<' that it begins with; none if it isn't UTF-16.
    static std::optional<ByteOrder> detect(std::string_view start);

    explicit Utf16Decoder(ByteOrder order) : order_(order) {}

    /// Appends what the bytes stand for; false at the first half of a pair without its other half.
    /// A byte order mark at the start is left out.
    bool decode(std::string_view bytes, std::string& text);

    /// Whether nothing is missing behind the bytes so far.
    bool isComplete() const { return !firstByte_ && high_ == 0; }

private:
    bool takeUnit(std::uint32_t unit, std::string& text);

    ByteOrder order_;
    std::optional<unsigned char> firstByte_; // of a unit that a portion ends within
    std::uint32_t high_ = 0;                 // first half of a surrogate pair
    bool isStart_ = true;
};

} // namespace velum::arxml
