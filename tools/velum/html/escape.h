#pragma once

#include <string>
#include <string_view>

namespace velum::html {

/// Adds a text of any bytes so that HTML and XML show it and nothing else, between tags as well as
/// in quoted attributes. What can't be seen is made visible: a control character becomes its
/// picture (U+2400 and following), a mark that changes the direction of a line or has no width its
/// number ("[U+202E]"), bytes that aren't UTF-8 become U+FFFD.
void appendEscaped(std::string& markup, std::string_view text);

} // namespace velum::html
