#include <algorithm>
#include <cmath>
#include <cstddef>
#include <velum_arxml/notation/coefficients.h>

namespace velum::arxml {

namespace {

void trim(std::vector<double>& polynomial) {
    while (polynomial.size() > 1 && polynomial.back() == 0.0) {
        polynomial.pop_back();
    }
    for (double& coefficient : polynomial) {
        coefficient += 0.0; // turns -0 into 0
    }
}

double at(std::vector<double> const& polynomial, std::size_t power) {
    return power < polynomial.size() ? polynomial[power] : 0.0;
}

std::vector<double> product(std::vector<double> const& a, std::vector<double> const& b) {
    if (a.empty() || b.empty()) {
        return {};
    }
    std::vector<double> result(a.size() + b.size() - 1);
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = 0; j < b.size(); ++j) {
            result[i + j] += a[i] * b[j];
        }
    }
    return result;
}

bool areClose(double a, double b) {
    constexpr double tolerance = 1e-9;
    return std::abs(a - b) <= tolerance * std::max(std::abs(a), std::abs(b));
}

} // namespace

Coefficients trimmed(Coefficients coefficients) {
    trim(coefficients.numerator);
    trim(coefficients.denominator);
    return coefficients;
}

Coefficients inverted(Coefficients const& coefficients) {
    const auto [n, d] = trimmed(coefficients);
    if (n.size() > 2 || d.size() > 2) {
        return {};
    }
    const double n0 = at(n, 0);
    const double n1 = at(n, 1);
    const double d0 = at(d, 0);
    const double d1 = at(d, 1);
    if (n1 * d0 - n0 * d1 == 0.0) {
        return {};
    }
    return trimmed({{-n0, d0}, {n1, -d1}});
}

bool areEquivalent(Coefficients const& a, Coefficients const& b) {
    // More coefficients than any real conversion has would make the products expensive.
    constexpr std::size_t most = 64;
    const auto isLong = [](Coefficients const& c) {
        return c.numerator.size() > most || c.denominator.size() > most;
    };
    if (isLong(a) || isLong(b)) {
        return a == b;
    }
    const std::vector<double> left = product(a.numerator, b.denominator);
    const std::vector<double> right = product(b.numerator, a.denominator);
    for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
        if (!areClose(at(left, i), at(right, i))) {
            return false;
        }
    }
    return true;
}

bool readLine(Coefficients const& toInternal, Line& line) {
    const Coefficients toPhysical = inverted(toInternal);
    if (toPhysical.numerator.empty() || toPhysical.numerator.size() > 2 ||
        toPhysical.denominator.size() != 1) {
        return false;
    }
    const double scale = toPhysical.denominator.front();
    line.bias = at(toPhysical.numerator, 0) / scale;
    line.slope = at(toPhysical.numerator, 1) / scale;
    return line.slope != 0.0 && std::isfinite(line.bias) && std::isfinite(line.slope);
}

} // namespace velum::arxml
