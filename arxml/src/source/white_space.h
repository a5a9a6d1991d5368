#pragma once

#include <cstddef>
#include <string_view>

namespace velum::arxml {

/// Whether XML takes the character for white space.
constexpr bool isWhiteSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// How much white space the text begins with.
constexpr std::size_t leadingSpace(std::string_view text) {
    std::size_t size = 0;
    while (size < text.size() && isWhiteSpace(text[size])) {
        ++size;
    }
    return size;
}

constexpr bool isBlank(std::string_view text) {
    return leadingSpace(text) == text.size();
}

/// The text without white space at both ends.
constexpr std::string_view withoutOuterSpace(std::string_view text) {
    text.remove_prefix(leadingSpace(text));
    while (!text.empty() && isWhiteSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace velum::arxml
