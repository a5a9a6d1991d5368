#pragma once

#include <string_view>

namespace velum::arxml {

/// The place of a child among the children of an element, by the order of the schema; -1 if that
/// isn't known.
int placeInElement(std::string_view element, std::string_view child);

} // namespace velum::arxml
