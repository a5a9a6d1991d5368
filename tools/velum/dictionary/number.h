#pragma once

#include "report/reason.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace velum::dictionary {

/// A whole number as a file writes it, or why it can't be taken.
struct WholeNumber {
    std::optional<std::int32_t> value;
    std::optional<report::Reason> fault; ///< badNumber or outOfRange if there is no value
};

/// Reads the schema's whole numbers: decimal, hexadecimal (0x), octal (0) and binary (0b), with a
/// sign. Blanks around the number are not part of it.
WholeNumber readWholeNumber(std::string_view text);

} // namespace velum::dictionary
