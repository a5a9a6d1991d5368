#pragma once

#include <string>
#include <string_view>

namespace velum::arxml {

/// The bytes of a file; raises InputError if it can't be read.
std::string contentOf(std::string const& file);

/// Why the text of a file can't be changed in place; empty if it can.
std::string obstacleIn(std::string_view text);

} // namespace velum::arxml
