#pragma once

#include <string_view>

namespace QOB::store {

// Numbers that a column of numbers doesn't keep.
inline constexpr std::string_view NotANumber = "nan";
inline constexpr std::string_view NegativeZero = "negative zero";

} // namespace QOB::store
