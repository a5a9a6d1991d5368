#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace velum::html {

/// A range of finite numbers.
struct Span {
    double low = 0.0;
    double high = 0.0;
};

/// From the least to the greatest finite number of a list; 0 to 0 if there is none.
Span spanOf(std::vector<double> const& numbers);

/// From the least to the greatest of all tables that one compares.
Span spanOfBoth(std::vector<double> numbers, std::vector<double> const& others);

/// The same range, a little wider if all numbers are equal, so that something can be drawn over it.
Span widened(Span span);

/// Where a number lies in a range: 0 at its low end, 1 at its high end. Neither overflows.
double fraction(double number, Span span);

/// Round numbers in a range, some `wanted` of them.
std::vector<double> ticks(Span span, int wanted);

/// How many colours the scale has, from low to high. They differ in lightness and in blue against
/// yellow only, which people with every kind of colour blindness tell apart.
inline constexpr std::size_t colourCount = 16;
std::size_t colourOf(double number, Span span);

/// A number for a label: six digits, which is as much as a picture shows.
std::string labelText(double number);

} // namespace velum::html
