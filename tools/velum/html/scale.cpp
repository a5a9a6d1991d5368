#include "html/scale.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace velum::html {

Span spanOf(std::vector<double> const& numbers) {
    bool isFirst = true;
    Span span;
    for (const double number : numbers) {
        if (!std::isfinite(number)) {
            continue;
        }
        span.low = isFirst ? number : std::min(span.low, number);
        span.high = isFirst ? number : std::max(span.high, number);
        isFirst = false;
    }
    return span;
}

Span spanOfBoth(std::vector<double> numbers, std::vector<double> const& others) {
    numbers.insert(numbers.end(), others.begin(), others.end());
    return spanOf(numbers);
}

Span widened(Span span) {
    if (span.low < span.high) {
        return span;
    }
    const double margin = std::max(1.0, std::abs(span.low) * 0.1);
    constexpr double largest = std::numeric_limits<double>::max();
    return {std::max(span.low - margin, -largest), std::min(span.high + margin, largest)};
}

double fraction(double number, Span span) {
    const double largest = std::max(std::abs(span.low), std::abs(span.high));
    if (!(span.low < span.high) || largest == 0.0) {
        return 0.5;
    }
    // The difference of two large numbers may be infinite, that of their halves isn't.
    const double width = span.high / 2.0 - span.low / 2.0;
    return width > 0.0 ? (number / 2.0 - span.low / 2.0) / width : 0.5;
}

std::vector<double> ticks(Span span, int wanted) {
    const double width = span.high - span.low;
    if (!(width > 0.0) || !std::isfinite(width)) {
        return span.low < span.high ? std::vector{span.low, span.high} : std::vector{span.low};
    }
    const double rough = width / std::max(wanted, 1);
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    if (!(power > 0.0) || !std::isfinite(power)) {
        return {span.low, span.high};
    }
    double step = power * 10.0;
    for (const double factor : {1.0, 2.0, 2.5, 5.0}) {
        if (power * factor >= rough) {
            step = power * factor;
            break;
        }
    }
    std::vector<double> round;
    const double first = std::ceil(span.low / step - 1e-9);
    for (int i = 0; i <= 2 * wanted + 2; ++i) {
        const double tick = (first + i) * step;
        if (tick > span.high + step * 1e-9) {
            break;
        }
        round.push_back(tick == 0.0 ? 0.0 : tick);
    }
    return round;
}

std::size_t colourOf(double number, Span span) {
    const double place = std::clamp(fraction(number, span), 0.0, 1.0) * double(colourCount);
    return std::min(colourCount - 1, static_cast<std::size_t>(place));
}

std::string labelText(double number) {
    if (std::isnan(number)) {
        return "NaN";
    }
    if (std::isinf(number)) {
        return number < 0 ? "-INF" : "INF";
    }
    std::array<char, 32> digits{};
    const auto [end, error] = std::to_chars(digits.data(),
                                            digits.data() + digits.size(),
                                            number == 0.0 ? 0.0 : number,
                                            std::chars_format::general,
                                            6);
    return {digits.data(), end};
}

} // namespace velum::html
