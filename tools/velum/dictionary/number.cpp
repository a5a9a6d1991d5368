#include "dictionary/number.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace velum::dictionary {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

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

} // namespace

WholeNumber readWholeNumber(std::string_view text) {
    std::string_view digits = trimmed(text);
    const bool isNegative = !digits.empty() && digits.front() == '-';
    if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) {
        digits.remove_prefix(1);
    }
    const int base = takeBase(digits);
    std::uint64_t magnitude = 0;
    const char* const end = digits.data() + digits.size();
    const auto [last, error] = std::from_chars(digits.data(), end, magnitude, base);
    if (last != end || error == std::errc::invalid_argument) {
        return {std::nullopt, report::Reason::badNumber};
    }
    // The most negative number is the library's invalid value.
    constexpr auto limit = static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());
    if (error == std::errc::result_out_of_range || magnitude > limit) {
        return {std::nullopt, report::Reason::outOfRange};
    }
    const auto value = static_cast<std::int32_t>(magnitude);
    return {isNegative ? -value : value, std::nullopt};
}

} // namespace velum::dictionary
