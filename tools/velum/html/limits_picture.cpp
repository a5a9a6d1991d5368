#include "html/frame.h"
#include "html/scale.h"
#include "html/type_pictures.h"
#include "show/texts.h"

#include <algorithm>
#include <cmath>
#include <vector>
#include <velum_arxml/notation/tool_notes.h>

namespace velum::html {

namespace {

constexpr double lineLeft = 30;
constexpr double lineRight = 290;
constexpr double noEnd = 12; ///< How far a line without an end goes on.

std::string endText(std::optional<double> const& end, std::string const& exact, char const* none) {
    if (!exact.empty()) {
        return exact;
    }
    return end ? labelText(*end) : std::string(none);
}

bool isDrawable(std::optional<double> const& end) {
    return end && std::isfinite(*end);
}

double placeOf(double number, Span span) {
    return lineLeft + fraction(number, span) * (lineRight - lineLeft);
}

/// A bar with a ring at an end that is excluded, a disc at one that is included and an arrow where
/// there is none.
void drawBar(Out& out, Limits const& limits, Span span, double y) {
    const bool hasLow = isDrawable(limits.low);
    const bool hasHigh = isDrawable(limits.high);
    const double from = hasLow ? placeOf(*limits.low, span) : lineLeft - noEnd;
    const double to = hasHigh ? placeOf(*limits.high, span) : lineRight + noEnd;
    out << "<path d=\"M" << Px{from} << " " << Px{y} << "H" << Px{to};
    if (!hasLow) {
        out << "M" << Px{from + 5} << " " << Px{y - 4} << "l-5 4l5 4";
    }
    if (!hasHigh) {
        out << "M" << Px{to - 5} << " " << Px{y - 4} << "l5 4l-5 4";
    }
    out << "\"/>";
    const auto drawEnd = [&](double x, bool isOpen) {
        if (isOpen) {
            out << "<circle class=o cx=" << Px{x} << " cy=" << Px{y} << " r=4 />";
        } else {
            out << "<circle cx=" << Px{x} << " cy=" << Px{y} << " r=4 />";
        }
    };
    if (hasLow) {
        drawEnd(from, limits.isLowOpen);
    }
    if (hasHigh) {
        drawEnd(to, limits.isHighOpen);
    }
}

/// Labels below their ends, or as far to the right of them as it takes to be read.
void drawLabels(Out& out, Limits const& limits, Span span, double y) {
    double free = 0.0;
    const auto drawLabel = [&](double number, std::string const& text) {
        const double half = widthOfLabel(text) / 2.0;
        const double x = std::max(placeOf(number, span), free + half);
        out << "<text x=" << Px{x} << " y=" << Px{y} << ">" << text << "</text>";
        free = x + half + 8.0;
    };
    if (isDrawable(limits.low)) {
        drawLabel(*limits.low, endText(limits.low, limits.lowText, ""));
    }
    if (isDrawable(limits.high) && limits.high != limits.low) {
        drawLabel(*limits.high, endText(limits.high, limits.highText, ""));
    }
}

} // namespace

std::string Limits::text() const {
    return (isLowOpen ? "(" : "[") + endText(low, lowText, "-inf") + ", " +
           endText(high, highText, "inf") + (isHighOpen ? ")" : "]");
}

Limits limitsOf(types::Real const& type) {
    Limits limits;
    if (type.hasMinValue() && type.getMinValue().isValid()) {
        limits.low = static_cast<double>(type.getMinValue());
        limits.isLowOpen = type.isMinOpen() == QOB::Boolean(true);
        limits.lowText = arxml::tool_note::get(type, arxml::tool_note::minValue).value_or("");
    }
    if (type.hasMaxValue() && type.getMaxValue().isValid()) {
        limits.high = static_cast<double>(type.getMaxValue());
        limits.isHighOpen = type.isMaxOpen() == QOB::Boolean(true);
        limits.highText = arxml::tool_note::get(type, arxml::tool_note::maxValue).value_or("");
    }
    return limits;
}

void drawLimits(Out& out, Limits const& limits, Limits const* before) {
    std::vector<double> ends;
    const auto addEnds = [&ends](Limits const& each) {
        for (auto const& end : {each.low, each.high}) {
            if (isDrawable(end)) {
                ends.push_back(*end);
            }
        }
    };
    addEnds(limits);
    if (before != nullptr) {
        addEnds(*before);
    }
    const Span span = widened(spanOf(ends));
    if (before == nullptr) {
        out << "<svg class=n width=320 height=36 aria-hidden=true>";
        drawBar(out, limits, span, 10);
        drawLabels(out, limits, span, 30);
    } else {
        out << "<svg class=n width=320 height=72 aria-hidden=true><g class=old>";
        drawLabels(out, *before, span, 12);
        drawBar(out, *before, span, 26);
        out << "</g>";
        drawBar(out, limits, span, 44);
        drawLabels(out, limits, span, 64);
    }
    out << "</svg>";
}

void drawBits(Out& out, std::int64_t bits) {
    constexpr std::int64_t mostBits = 64;
    const std::int64_t drawn = std::min(bits, mostBits);
    out << "<svg class=bits width=" << drawn * 5 + 1
        << " height=11 aria-hidden=true><path d=\"M0 .5h" << drawn * 5 << "v10h-" << drawn * 5
        << "z";
    for (std::int64_t bit = 8; bit < drawn; bit += 8) {
        out << "M" << bit * 5 << " 0v11";
    }
    out << "\"/></svg>";
}

} // namespace velum::html
