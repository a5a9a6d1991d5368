#pragma once

#include <string>
#include <string_view>
#include <velum_arxml/source/export.h>

namespace velum::arxml {

/// A text in raised or lowered characters, where there are such: "2" is "²"; of others "^ab",
/// "_ab".
VELUM_ARXML_EXPORT std::string superscript(std::string_view text);
VELUM_ARXML_EXPORT std::string subscript(std::string_view text);

} // namespace velum::arxml
