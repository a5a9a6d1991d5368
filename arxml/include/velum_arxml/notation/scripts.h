#pragma once

#include <string>
#include <string_view>

namespace velum::arxml {

/// A text in raised or lowered characters, where there are such: "2" is "²"; of others "^ab",
/// "_ab".
std::string superscript(std::string_view text);
std::string subscript(std::string_view text);

} // namespace velum::arxml
