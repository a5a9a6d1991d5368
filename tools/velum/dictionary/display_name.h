#pragma once

#include "arxml/element_store.h"

#include <string>
#include <string_view>

namespace velum::dictionary {

/// A text in raised or lowered characters, where there are such: "2" is "²"; of others "^ab",
/// "_ab".
std::string superscript(std::string_view text);
std::string subscript(std::string_view text);

/// The name of a unit as a person reads it: "m/s²" of m/s<SUP>2</SUP>.
std::string displayNameOf(arxml::Element displayName);

} // namespace velum::dictionary
