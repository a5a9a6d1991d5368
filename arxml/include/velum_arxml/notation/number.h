#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <velum_arxml/findings/reason.h>
#include <velum_arxml/source/export.h>

namespace velum::arxml {

/// A whole number as a file writes it, or why it can't be taken.
struct WholeNumber {
    std::optional<std::int32_t> value;
    std::optional<Reason> fault; ///< badNumber or outOfRange if there is no value
};

/// Reads the schema's whole numbers: decimal, hexadecimal (0x), octal (0) and binary (0b), with a
/// sign. Blanks around the number are not part of it.
VELUM_ARXML_EXPORT WholeNumber readWholeNumber(std::string_view text);

/// Reads a number of something: a whole number below zero is out of range.
VELUM_ARXML_EXPORT WholeNumber readCount(std::string_view text);

/// A real number as a file writes it, or why it can't be taken.
struct RealNumber {
    std::optional<double> value; ///< May be infinite or no number (NaN).
    std::optional<Reason> fault; ///< badNumber or outOfRange if there is no value
    bool isRounded = false;      ///< The text is a whole number that a double can't hold exactly.
};

/// Reads the schema's numbers: whole ones in every base, decimal fractions with or without an
/// exponent, INF, -INF, +INF, NaN, true and false. No locale has a say in it.
VELUM_ARXML_EXPORT RealNumber readRealNumber(std::string_view text);

/// The shortest text that reads back as the same number.
VELUM_ARXML_EXPORT std::string numberText(double number);

} // namespace velum::arxml
