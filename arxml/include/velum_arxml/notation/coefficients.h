#pragma once

#include <vector>
#include <velum_arxml/source/export.h>

namespace velum::arxml {

/// The quotient of two polynomials; the coefficient at position i belongs to x to the power of i.
struct Coefficients {
    std::vector<double> numerator;
    std::vector<double> denominator;

    friend bool operator==(Coefficients const&, Coefficients const&) = default;
};

/// Without zeros at the high ends, the last one of only zeros excepted, and with 0 for -0.
VELUM_ARXML_EXPORT Coefficients trimmed(Coefficients coefficients);

/// Turns y = f(x) into x = g(y). Only a quotient of two linear functions that is not constant can
/// be turned; anything else gives empty coefficients.
VELUM_ARXML_EXPORT Coefficients inverted(Coefficients const& coefficients);

/// Whether the two are the same function but for the last digits of their numbers.
VELUM_ARXML_EXPORT bool areEquivalent(Coefficients const& a, Coefficients const& b);

/// A straight line: physical = bias + slope * internal.
struct Line {
    double bias = 0.0;
    double slope = 1.0;
};

/// The line of which `toInternal` is the inverse; false if it is none, or has no slope.
VELUM_ARXML_EXPORT bool readLine(Coefficients const& toInternal, Line& line);

} // namespace velum::arxml
