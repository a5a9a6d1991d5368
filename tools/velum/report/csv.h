#pragma once

#include <string>
#include <string_view>

namespace velum::report {

/// What ends a row of comma-separated values.
inline constexpr std::string_view endOfCsvRow = "\r\n";

/// A text as a cell of comma-separated values (RFC 4180). An empty text is "", so that an empty
/// cell is a value that isn't there.
std::string csvCell(std::string_view text);

} // namespace velum::report
