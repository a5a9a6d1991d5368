#pragma once

#include <string>

namespace velum::commands {

/// Prints a text on the standard output; false, with a word on the standard error, if that fails.
bool print(std::string const& text);

} // namespace velum::commands
