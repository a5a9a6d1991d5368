#include "html/assets.h"
#include "html/frame.h"
#include "html/pictures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velum::html {

namespace {

constexpr double curveWidth = 470;
constexpr double curveHeight = 300;
constexpr Box curveBox{62, 30, 450, 250};
/// Of more lines nobody could tell which is which.
constexpr std::size_t mostLines = 12;

/// Numbers that aren't finite break a line.
void drawLine(Out& out, std::vector<double> const& places, Values const& values, Span span) {
    bool isBegun = false;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!std::isfinite(values.numbers[i])) {
            isBegun = false;
            continue;
        }
        if (isBegun) {
            out << "L";
        } else {
            out << "M";
        }
        out << Px{places[i]} << " " << Px{upOf(values.numbers[i], span, curveBox)};
        isBegun = true;
    }
}

void drawPoints(Out& out, std::vector<double> const& places, Drawn const& drawn, Span span) {
    Values const& values = drawn.lookup.values;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!std::isfinite(values.numbers[i])) {
            out << "<path class=\"bad\" d=\"M" << Px{places[i] - 4} << " "
                << Px{curveBox.bottom - 4} << "l8 -8m-8 0l8 8\"/>";
            continue;
        }
        out << "<circle r=\"3.5\" cx=\"" << Px{places[i]} << "\" cy=\""
            << Px{upOf(values.numbers[i], span, curveBox)} << "\"/>";
        if (drawn.changed.contains(i)) {
            out << "<circle class=\"changed\" r=\"7\" cx=\"" << Px{places[i]} << "\" cy=\""
                << Px{upOf(values.numbers[i], span, curveBox)} << "\"/>";
        }
    }
}

Values rowOf(Lookup const& map, std::size_t row) {
    const std::size_t rows = map.axes[1].points.size();
    Values values;
    for (std::size_t i = row; i < map.values.size(); i += rows) {
        values.texts.push_back(map.values.texts[i]);
        values.numbers.push_back(map.values.numbers[i]);
    }
    return values;
}

} // namespace

void beginPicture(Out& out, double width, double height, std::string_view label, bool isAlone) {
    out << "<svg class=\"pic\" role=\"img\" width=\"" << Px{width} << "\" height=\"" << Px{height}
        << "\" viewBox=\"0 0 " << Px{width} << " " << Px{height} << "\" aria-label=\"" << label
        << "\"";
    if (isAlone) {
        out << " xmlns=\"http://www.w3.org/2000/svg\"><style>" << Markup{pictureStyle}
            << "</style><rect class=\"paper\" width=\"" << Px{width} << "\" height=\"" << Px{height}
            << "\"/";
    }
}

void drawCurve(Out& out, Drawn const& drawn, bool isAlone) {
    Lookup const& curve = drawn.lookup;
    const Span span = widened(drawn.scale);
    const std::vector<double> places = placesOf(curve.axes[0], curveBox);
    beginPicture(out,
                 curveWidth,
                 curveHeight,
                 "Curve of " + curve.title() + " over " + curve.axes[0].title() + ", " +
                     std::to_string(curve.values.size()) + " points",
                 isAlone);
    if (!isAlone) {
        out << " data-kind=\"curve\" data-x=\"";
        for (const double place : places) {
            out << Px{place} << " ";
        }
        out << "\" data-y=\"" << Px{curveBox.top} << " " << Px{curveBox.bottom} << "\" data-a=\""
            << curve.axes[0].title() << "\"";
    }
    out << ">";
    drawUpright(out, curveBox, span, curve.title());
    drawBelow(out, curveBox, labelsOf(curve.axes[0], places), curve.axes[0].title(), curveWidth);
    out << "<path class=\"axis\" d=\"M" << Px{curveBox.left} << " " << Px{curveBox.top} << "V"
        << Px{curveBox.bottom} << "H" << Px{curveBox.right} << "\"/><path class=\"line\" d=\"";
    drawLine(out, places, curve.values, span);
    out << "\"/>";
    drawPoints(out, places, drawn, span);
    out << "</svg>";
}

void drawFamily(Out& out, Drawn const& drawn) {
    Lookup const& map = drawn.lookup;
    const std::size_t rows = map.axes[1].points.size();
    const Span span = widened(drawn.scale);
    const std::vector<double> places = placesOf(map.axes[0], curveBox);
    const std::size_t shown = std::min(rows, mostLines);
    beginPicture(out,
                 curveWidth + 90,
                 curveHeight,
                 map.title() + " over " + map.axes[0].title() + ", a line for each " +
                     map.axes[1].title(),
                 false);
    out << ">";
    drawUpright(out, curveBox, span, map.title());
    drawBelow(out, curveBox, labelsOf(map.axes[0], places), map.axes[0].title(), curveWidth);
    out << "<path class=\"axis\" d=\"M" << Px{curveBox.left} << " " << Px{curveBox.top} << "V"
        << Px{curveBox.bottom} << "H" << Px{curveBox.right} << "\"/><text class=\"title\" x=\""
        << Px{curveBox.right + 14} << "\" y=\"" << Px{curveBox.top - 12} << "\">"
        << shortenedTo(94, map.axes[1].title()) << "</text>";
    for (std::size_t i = 0; i < shown; ++i) {
        // The highest line has the highest label.
        const std::size_t row = shown == 1 ? 0 : (shown - 1 - i) * (rows - 1) / (shown - 1);
        const std::size_t colour =
            shown == 1 ? 4 : (shown - 1 - i) * (colourCount - 1) / (shown - 1);
        const double y = curveBox.top + 10 + 18.0 * static_cast<double>(i);
        out << "<path class=\"line s" << colour << "\" d=\"";
        drawLine(out, places, rowOf(map, row), span);
        out << "M" << Px{curveBox.right + 14} << " " << Px{y} << "h18\"/><text x=\""
            << Px{curveBox.right + 38} << "\" y=\"" << Px{y + 4} << "\">"
            << shortened(map.axes[1].points.texts[row], 8) << "</text>";
    }
    out << "</svg>";
}

} // namespace velum::html
