#pragma once

#include "tessel/encoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

/// The conversions behind encoding.h, over the unit of the wide text: wchar_t in the library,
/// char16_t and char32_t wherever both sizes are looked at on one machine.
namespace Tessel::Detail {

inline constexpr char32_t lastCodePoint = 0x10FFFF;

constexpr bool isSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

/// "U+" or "0x" and the number in upper-case hexadecimal digits, at least `digits` of them.
inline std::string hex(char const* prefix, char32_t number, std::size_t digits) {
    std::array<char, 8> buffer{};
    char* const end =
        std::to_chars(
            buffer.data(), buffer.data() + buffer.size(), static_cast<std::uint32_t>(number), 16)
            .ptr;
    std::transform(buffer.data(), end, buffer.data(), [](char c) {
        return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    const auto size = static_cast<std::size_t>(end - buffer.data());
    return prefix + std::string(digits > size ? digits - size : 0, '0') +
           std::string(buffer.data(), size);
}

[[noreturn]] inline void
raiseUtf8(std::string const& subject, std::size_t offset, std::string const& fault) {
    throw EncodingError(subject + " at offset (" + std::to_string(offset) + ") " + fault);
}

/// Reads the sequence of two or more bytes at `at` and moves `at` behind it.
inline char32_t decodeSequence(std::string_view text, std::size_t& at) {
    struct Lead {
        std::size_t size;
        char32_t bits;
        char32_t least; // a smaller number has a shorter form, which is the only right one
    };
    const std::size_t start = at;
    const auto first = static_cast<unsigned char>(text[start]);
    Lead lead{};
    if ((first & 0xE0U) == 0xC0U) {
        lead = {2, first & 0x1FU, 0x80};
    } else if ((first & 0xF0U) == 0xE0U) {
        lead = {3, first & 0x0FU, 0x800};
    } else if ((first & 0xF8U) == 0xF0U) {
        lead = {4, first & 0x07U, 0x10000};
    } else {
        raiseUtf8("Byte (" + hex("0x", first, 2) + ")", start, "does not begin a UTF-8 sequence.");
    }
    char32_t code = lead.bits;
    for (std::size_t i = start + 1; i < start + lead.size; ++i) {
        if (i == text.size()) {
            raiseUtf8("UTF-8 sequence", start, "is cut off by the end of the text.");
        }
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80U) {
            raiseUtf8("Byte (" + hex("0x", byte, 2) + ")",
                      i,
                      "does not continue the UTF-8 sequence before it.");
        }
        code = (code << 6U) | (byte & 0x3FU);
    }
    if (code < lead.least) {
        raiseUtf8("UTF-8 sequence",
                  start,
                  "is longer than its character (" + hex("U+", code, 4) + ") needs.");
    }
    if (isSurrogate(code)) {
        raiseUtf8("UTF-8 sequence", start, "encodes a surrogate (" + hex("U+", code, 4) + ").");
    }
    if (code > lastCodePoint) {
        raiseUtf8("UTF-8 sequence",
                  start,
                  "encodes a number (" + hex("U+", code, 4) + ") above U+10FFFF.");
    }
    at = start + lead.size;
    return code;
}

template <class Unit>
std::basic_string<Unit> decodeUtf8(std::string_view text) {
    // No character needs more units than it has bytes, so one allocation is enough.
    std::basic_string<Unit> wide(text.size(), Unit{});
    Unit* out = wide.data();
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte < 0x80U) {
            *out++ = static_cast<Unit>(byte);
            ++at;
            continue;
        }
        const char32_t code = decodeSequence(text, at);
        if constexpr (sizeof(Unit) == 2) {
            if (code > 0xFFFF) {
                *out++ = static_cast<Unit>(0xD800 + ((code - 0x10000) >> 10U));
                *out++ = static_cast<Unit>(0xDC00 + ((code - 0x10000) & 0x3FFU));
                continue;
            }
        }
        *out++ = static_cast<Unit>(code);
    }
    wide.resize(static_cast<std::size_t>(out - wide.data()));
    return wide;
}

inline void appendUtf8(std::string& out, char32_t code) {
    const auto tail = [&](unsigned shift) {
        out += static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
    };
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0U | (code >> 6U));
        tail(0);
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0U | (code >> 12U));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0U | (code >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

template <class Unit>
std::string encodeUtf8(std::basic_string_view<Unit> text) {
    const auto unitAt = [&](std::size_t at) {
        // Through the unsigned type of the same size: wchar_t may be signed.
        return static_cast<char32_t>(static_cast<std::make_unsigned_t<Unit>>(text[at]));
    };
    std::string narrow;
    narrow.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char32_t unit = unitAt(at);
        if (unit < 0x80) {
            narrow += static_cast<char>(unit);
            continue;
        }
        char32_t code = unit;
        if constexpr (sizeof(Unit) == 2) {
            const bool pair = unit >= 0xD800 && unit <= 0xDBFF && at + 1 < text.size() &&
                              unitAt(at + 1) >= 0xDC00 && unitAt(at + 1) <= 0xDFFF;
            if (pair) {
                ++at;
                code = 0x10000 + ((unit - 0xD800) << 10U) + (unitAt(at) - 0xDC00);
            }
        }
        const auto refuse = [&](char const* fault) {
            throw EncodingError("Wide character (" + hex("0x", unit, 4) + ") at index (" +
                                std::to_string(at) + ") " + fault);
        };
        if (isSurrogate(code)) {
            refuse("is a surrogate that belongs to no pair.");
        }
        if (code > lastCodePoint) {
            refuse("is above U+10FFFF.");
        }
        appendUtf8(narrow, code);
    }
    return narrow;
}

} // namespace Tessel::Detail
