#include "source/white_space.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>
#include <utility>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

namespace {

/// Takes the prefix of a base other than ten off the digits.
int takeBase(std::string_view& digits) {
    if (digits.size() < 2 || digits[0] != '0') {
        return 10;
    }
    const bool isHexadecimal = digits[1] == 'x' || digits[1] == 'X';
    const bool isBinary = digits[1] == 'b' || digits[1] == 'B';
    digits.remove_prefix(isHexadecimal || isBinary ? 2 : 1);
    return isHexadecimal ? 16 : isBinary ? 2 : 8;
}

bool isNegativeSign(std::string_view& digits) {
    const bool isNegative = !digits.empty() && digits.front() == '-';
    if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) {
        digits.remove_prefix(1);
    }
    return isNegative;
}

bool isDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Whether the digits, which begin with no zero, are those of the number.
bool isExact(std::string_view digits, double number) {
    constexpr std::size_t mostDigits = 320; // of the largest double
    std::array<char, mostDigits> exact{};
    const auto [end, error] =
        std::to_chars(exact.data(), exact.data() + exact.size(), number, std::chars_format::fixed);
    return error == std::errc() && std::string_view(exact.data(), end) == digits;
}

std::optional<double> readWord(std::string_view text) {
    using Limits = std::numeric_limits<double>;
    if (text == "true") {
        return 1.0;
    }
    if (text == "false") {
        return 0.0;
    }
    if (text == "INF" || text == "+INF") {
        return Limits::infinity();
    }
    if (text == "-INF") {
        return -Limits::infinity();
    }
    if (text == "NaN") {
        return Limits::quiet_NaN();
    }
    return std::nullopt;
}

/// What digits stand for, in the base that their prefix names; `invalid_argument` if something else
/// is among them.
std::pair<std::uint64_t, std::errc> magnitudeOf(std::string_view digits) {
    const int base = takeBase(digits);
    std::uint64_t magnitude = 0;
    char const* const end = digits.data() + digits.size();
    const auto [last, error] = std::from_chars(digits.data(), end, magnitude, base);
    return {magnitude, last != end ? std::errc::invalid_argument : error};
}

RealNumber signedReal(double magnitude, bool isNegative, bool isRounded) {
    return {isNegative ? -magnitude : magnitude, std::nullopt, isRounded};
}

} // namespace

WholeNumber readWholeNumber(std::string_view text) {
    std::string_view digits = withoutOuterSpace(text);
    const bool isNegative = isNegativeSign(digits);
    const auto [magnitude, error] = magnitudeOf(digits);
    if (error == std::errc::invalid_argument) {
        return {std::nullopt, Reason::badNumber};
    }
    // The most negative number is the library's invalid value.
    constexpr auto limit = static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());
    if (error == std::errc::result_out_of_range || magnitude > limit) {
        return {std::nullopt, Reason::outOfRange};
    }
    const auto value = static_cast<std::int32_t>(magnitude);
    return {isNegative ? -value : value, std::nullopt};
}

WholeNumber readCount(std::string_view text) {
    const WholeNumber number = readWholeNumber(text);
    if (number.value && *number.value < 0) {
        return {std::nullopt, Reason::outOfRange};
    }
    return number;
}

RealNumber readRealNumber(std::string_view text) {
    std::string_view digits = withoutOuterSpace(text);
    if (const auto word = readWord(digits)) {
        return {word, std::nullopt, false};
    }
    const bool isNegative = isNegativeSign(digits);
    const bool isPrefixed = digits.size() > 1 && digits[0] == '0' &&
                            (digits[1] == 'x' || digits[1] == 'X' || digits[1] == 'b' ||
                             digits[1] == 'B' || isDigits(digits));
    if (isPrefixed) {
        const auto [magnitude, error] = magnitudeOf(digits);
        if (error == std::errc::invalid_argument) {
            return {std::nullopt, Reason::badNumber};
        }
        if (error == std::errc::result_out_of_range) {
            return {std::nullopt, Reason::outOfRange};
        }
        const auto number = static_cast<double>(magnitude);
        return signedReal(number, isNegative, !isExact(std::to_string(magnitude), number));
    }
    // The words that the parser would take ("inf", "nan") are not the schema's.
    const bool isNumber = !digits.empty() && (isDigits(digits.substr(0, 1)) || digits[0] == '.');
    double number = 0.0;
    char const* const end = digits.data() + digits.size();
    const auto [last, error] = std::from_chars(digits.data(), end, number);
    if (!isNumber || last != end || error == std::errc::invalid_argument) {
        return {std::nullopt, Reason::badNumber};
    }
    if (error == std::errc::result_out_of_range) {
        return {std::nullopt, Reason::outOfRange};
    }
    return signedReal(number, isNegative, isDigits(digits) && !isExact(digits, number));
}

std::string numberText(double number) {
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), end};
}

} // namespace velum::arxml
