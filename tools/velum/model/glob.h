#pragma once

#include <string_view>

namespace velum::model {

/// Whether a text matches a pattern as a whole: `*` stands for any characters but `/`, `**` for any
/// characters, `?` for one character but `/`, `[abc]`, `[a-z]` and `[!a]` for one of a set. A
/// backslash takes the next character as it is.
bool matches(std::string_view pattern, std::string_view text);

/// The same for a text in which `/` is a character like any other.
bool matchesText(std::string_view pattern, std::string_view text);

} // namespace velum::model
