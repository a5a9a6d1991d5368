#include "html/frame.h"
#include "html/pictures.h"
#include "html/type_pictures.h"
#include "show/texts.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <vector>
#include <velum_arxml/notation/coefficients.h>
#include <velum_arxml/notation/number.h>

namespace velum::html {

using arxml::numberText;

namespace {

constexpr Box methodBox{62, 30, 430, 210};
constexpr double methodWidth = 450;
constexpr int curveSamples = 96;
constexpr std::size_t mostTexts = 12;

/// What a method computes, and what is known of the values that it is for.
struct Method {
    arxml::Coefficients toInternal;
    std::optional<arxml::Line> line; ///< From internal to physical values.
    Span physical{0.0, 100.0};
    bool areLimitsKnown = false;
    std::map<int, std::string> texts;

    bool computes() const {
        return !toInternal.numerator.empty() && !toInternal.denominator.empty();
    }
};

double valueOf(std::vector<double> const& coefficients, double x) {
    double value = 0.0;
    for (auto each = coefficients.rbegin(); each != coefficients.rend(); ++each) {
        value = value * x + *each;
    }
    return value;
}

double internalOf(Method const& method, double physical) {
    return valueOf(method.toInternal.numerator, physical) /
           valueOf(method.toInternal.denominator, physical);
}

void addLimits(std::vector<double>& physical,
               types::PrimitiveType const& type,
               Method const& method) {
    const types::Real real(type);
    if (!real.isValid()) {
        return;
    }
    const Limits limits = limitsOf(real);
    const bool isPhysical = type.isApplication() == QOB::Boolean(true);
    for (auto const& end : {limits.low, limits.high}) {
        if (!end || !std::isfinite(*end)) {
            continue;
        }
        if (isPhysical) {
            physical.push_back(*end);
        } else if (method.line) {
            physical.push_back(method.line->bias + method.line->slope * *end);
        }
    }
}

Method methodOf(types::CompuMethod const& held) {
    Method method;
    for (const QOB::Real number : held.getCalToInternalCompuNumerators()) {
        method.toInternal.numerator.push_back(number);
    }
    for (const QOB::Real number : held.getCalToInternalCompuDenominators()) {
        method.toInternal.denominator.push_back(number);
    }
    using Category = types::CompuMethodCategory;
    if (held.getCategory() == Category(Category::Identical) && !method.computes()) {
        method.toInternal = {{0.0, 1.0}, {1.0}};
    }
    arxml::Line line;
    if (method.computes() && arxml::readLine(method.toInternal, line)) {
        method.line = line;
    }
    std::vector<double> physical;
    for (const types::PrimitiveType type : held.getPrimitiveTypes()) {
        addLimits(physical, type, method);
        if (const types::Enumeration enumeration(type); enumeration.isValid()) {
            for (const types::EnumerationLiteral literal : enumeration.getOwnedLiterals()) {
                method.texts.emplace(static_cast<int>(literal.getValue()), show::nameOf(literal));
            }
        }
    }
    const Span span = spanOf(physical);
    method.areLimitsKnown = span.low < span.high;
    method.physical = method.areLimitsKnown ? span : method.physical;
    return method;
}

struct Sample {
    double internal;
    double physical;
};

std::vector<Sample> samplesOf(Method const& method) {
    std::vector<Sample> samples;
    const int count = method.line ? 1 : curveSamples;
    for (int i = 0; i <= count; ++i) {
        const double part = double(i) / count;
        const double physical = method.physical.low * (1.0 - part) + method.physical.high * part;
        samples.push_back({internalOf(method, physical), physical});
    }
    return samples;
}

/// Where a denominator is 0, the values on both sides are far apart: the line is broken there. The
/// middle nine tenths of the values decide what is drawn.
Span internalSpan(std::vector<Sample> const& samples, Method const& method) {
    std::vector<double> internal;
    for (Sample const& sample : samples) {
        if (std::isfinite(sample.internal)) {
            internal.push_back(sample.internal);
        }
    }
    if (internal.empty()) {
        return {};
    }
    std::sort(internal.begin(), internal.end());
    if (!method.line) {
        const std::size_t cut = internal.size() / 20;
        internal = {internal[cut], internal[internal.size() - 1 - cut]};
    }
    for (auto const& [value, text] : method.texts) {
        internal.push_back(value);
    }
    return widened(spanOf(internal));
}

void drawSamples(Out& out, std::vector<Sample> const& samples, Span across, Span up) {
    bool isBegun = false;
    for (Sample const& sample : samples) {
        const bool isDrawn = std::isfinite(sample.internal) && sample.internal >= across.low &&
                             sample.internal <= across.high;
        if (!isDrawn) {
            isBegun = false;
            continue;
        }
        if (isBegun) {
            out << "L";
        } else {
            out << "M";
        }
        out << Px{acrossOf(sample.internal, across, methodBox)} << " "
            << Px{upOf(sample.physical, up, methodBox)};
        isBegun = true;
    }
}

void drawTexts(Out& out, Method const& method, Span across) {
    std::size_t count = 0;
    for (auto const& [value, text] : method.texts) {
        if (++count > mostTexts) {
            return;
        }
        const double x = acrossOf(value, across, methodBox);
        out << "<path class=\"text\" d=\"M" << Px{x} << " " << Px{methodBox.top} << "V"
            << Px{methodBox.bottom} << "\"/><text class=\"halo";
        const bool isOnTheRight = x > (methodBox.left + methodBox.right) / 2.0;
        if (isOnTheRight) {
            out << " end";
        }
        out << "\" x=\"" << Px{isOnTheRight ? x - 4 : x + 4} << "\" y=\""
            << Px{methodBox.top + 12.0 * double(count)} << "\">" << value << " "
            << shortened(text, 18) << "</text>";
    }
}

void drawPlot(Out& out, Method const& method, std::string const& name, std::string const& unit) {
    const std::vector<Sample> samples = samplesOf(method);
    const Span across = internalSpan(samples, method);
    if (!(across.low < across.high)) {
        return;
    }
    const Span up = widened(method.physical);
    beginPicture(out, methodWidth, 258, "Physical over internal values of " + name, false);
    out << ">";
    drawUpright(out, methodBox, up, "physical" + (unit.empty() ? "" : " [" + unit + "]"));
    std::vector<Label> labels;
    for (const double tick : ticks(across, 6)) {
        labels.push_back({acrossOf(tick, across, methodBox), labelText(tick)});
    }
    drawBelow(out, methodBox, labels, "internal", methodWidth);
    out << "<path class=\"axis\" d=\"M" << Px{methodBox.left} << " " << Px{methodBox.top} << "V"
        << Px{methodBox.bottom} << "H" << Px{methodBox.right} << "\"/><path class=\"line\" d=\"";
    drawSamples(out, samples, across, up);
    out << "\"/>";
    if (method.areLimitsKnown) {
        for (const double limit : {method.physical.low, method.physical.high}) {
            out << "<path class=\"limit\" d=\"M" << Px{methodBox.left} << " "
                << Px{upOf(limit, up, methodBox)} << "H" << Px{methodBox.right} << "\"/>";
        }
    }
    drawTexts(out, method, across);
    out << "</svg>";
}

void writeTexts(Out& out, Method const& method) {
    constexpr std::size_t mostRows = 1000;
    out << "<table><caption>Texts</caption><thead><tr><th scope=col>Value<th scope=col>Text<tbody>";
    std::size_t count = 0;
    for (auto const& [value, text] : method.texts) {
        if (++count > mostRows) {
            break;
        }
        out << "<tr><td>" << value << "<td>" << text;
    }
    out << "</table>";
    if (count > mostRows) {
        out << "<p class=note>The first " << mostRows << " of " << method.texts.size()
            << " texts are listed; the enumeration has all.";
    }
}

} // namespace

std::string formulaText(types::CompuMethod const& held) {
    const Method method = methodOf(held);
    if (method.line) {
        return "physical = " + numberText(method.line->bias) + " + " +
               numberText(method.line->slope) + " × internal";
    }
    return method.computes() ? show::methodText(held) : std::string();
}

void drawMethod(Out& out, types::CompuMethod const& held) {
    const Method method = methodOf(held);
    const std::string unit = held.hasUnit() ? show::unitText(held.getUnit()) : std::string();
    if (method.computes()) {
        drawPlot(out, method, show::nameOf(held), unit);
        if (!method.areLimitsKnown) {
            out << "<p class=note>No type with this method has limits; drawn from 0 to 100.";
        }
    }
    if (!method.texts.empty()) {
        writeTexts(out, method);
    }
}

} // namespace velum::html
