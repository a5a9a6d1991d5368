#include "html/escape.h"

#include <array>
#include <cstdint>

namespace velum::html {

namespace {

constexpr char32_t replacement = 0xFFFD;

struct Decoded {
    char32_t character;
    std::size_t size; ///< In bytes, at least 1.
};

/// The next character of a text that isn't empty. A byte that begins no valid character is one that
/// must be replaced.
Decoded decode(std::string_view text) {
    const auto byte = [text](std::size_t i) -> std::uint32_t {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const std::uint32_t first = byte(0);
    const std::size_t size = first < 0x80   ? 1
                             : first < 0xC2 ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
    if (size == 0) {
        return {replacement, 1};
    }
    constexpr std::array<std::uint32_t, 5> bitsOfFirst = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t character = first & bitsOfFirst.at(size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return {replacement, 1};
        }
        character = (character << 6U) | (byte(i) & 0x3FU);
    }
    const bool isOverlong = (size == 3 && character < 0x800) || (size == 4 && character < 0x10000);
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    if (isOverlong || isSurrogate || character > 0x10FFFF) {
        return {replacement, 1};
    }
    return {character, size};
}

/// Marks of direction, and characters without width that hide in a name.
bool isHidden(char32_t c) {
    return (c >= 0x200B && c <= 0x200F && c != 0x200C && c != 0x200D) ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || c == 0x061C ||
           c == 0xFEFF;
}

/// A character of U+0800 to U+FFFF in UTF-8.
void appendEncoded(std::string& text, char32_t c) {
    text += static_cast<char>(0xE0U | (c >> 12U));
    text += static_cast<char>(0x80U | ((c >> 6U) & 0x3FU));
    text += static_cast<char>(0x80U | (c & 0x3FU));
}

void appendNumber(std::string& text, char32_t c) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += "[U+";
    for (unsigned shift = 16; shift > 0;) {
        shift -= 4;
        text += digits[(c >> shift) & 0xFU];
    }
    text += ']';
}

/// True if an ASCII character needs no change.
bool appendAscii(std::string& markup, char c) {
    switch (c) {
    case '&':
        markup += "&amp;";
        return true;
    case '<':
        markup += "&lt;";
        return true;
    case '>':
        markup += "&gt;";
        return true;
    case '"':
        markup += "&quot;";
        return true;
    case '\'':
        markup += "&#39;";
        return true;
    default:
        if (c >= 0x20 && c < 0x7F) {
            markup += c;
            return true;
        }
        return false;
    }
}

} // namespace

void appendEscaped(std::string& markup, std::string_view text) {
    while (!text.empty()) {
        if (appendAscii(markup, text.front())) {
            text.remove_prefix(1);
            continue;
        }
        const auto [c, size] = decode(text);
        if (c < 0x20) {
            appendEncoded(markup, 0x2400 + c);
        } else if (c == 0x7F) {
            appendEncoded(markup, 0x2421);
        } else if (c < 0xA0 || c == replacement || c == 0xFFFE || c == 0xFFFF) {
            appendEncoded(markup, replacement);
        } else if (isHidden(c)) {
            appendNumber(markup, c);
        } else {
            markup += text.substr(0, size);
        }
        text.remove_prefix(size);
    }
}

} // namespace velum::html
