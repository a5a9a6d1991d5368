#include "html/frame.h"
#include "html/isolines.h"
#include "html/pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace velum::html {

namespace {

constexpr double mostWidth = 400;
constexpr double mostHeight = 320;
constexpr double leastCell = 3;
constexpr double mostCell = 64;
/// A grid of fewer points is read cell by cell.
constexpr std::size_t leastForLines = 4;
constexpr double marginLeft = 62;
constexpr double marginTop = 30;

/// The cells of a map on paper: the first axis goes to the right, the second one up.
struct Grid {
    Box box;
    std::size_t columns;
    std::size_t rows;
    double wide;
    double high;

    explicit Grid(Lookup const& map)
        : box{}, columns(map.axes[0].points.size()), rows(map.axes[1].points.size()) {
        wide =
            std::clamp(mostWidth / double(std::max<std::size_t>(columns, 1)), leastCell, mostCell);
        high = std::clamp(mostHeight / double(std::max<std::size_t>(rows, 1)), leastCell, mostCell);
        box = {marginLeft,
               marginTop,
               marginLeft + wide * double(columns),
               marginTop + high * double(rows)};
    }
    double xOf(double column) const { return box.left + column * wide; }
    double yOf(double row) const { return box.bottom - row * high; }
    double legendLeft() const { return box.right + 22; }
    double legendHeight() const { return std::max(box.height(), 96.0); }
    double legendOf(double part) const { return box.top + legendHeight() * (1.0 - part); }
};

void addRectangle(std::string& path, double left, double top, double right, double bottom) {
    Out piece([&path](std::string_view markup) {
        path += markup;
        return true;
    });
    piece << "M" << Px{left} << " " << Px{top} << "H" << Px{right} << "V" << Px{bottom} << "H"
          << Px{left} << "z";
    piece.finish();
}

/// The place of a colour in the legend; the only colour of a map of equal values is in the middle.
void addToLegend(std::string& path, Grid const& grid, std::size_t colour, Span span) {
    const double left = grid.legendLeft();
    const double from = double(colour) / double(colourCount);
    if (span.low < span.high) {
        const double to = double(colour + 1) / double(colourCount);
        addRectangle(path, left, grid.legendOf(to), left + 14, grid.legendOf(from));
    } else if (colour == colourCount / 2) {
        addRectangle(path, left, grid.legendOf(from) - 7, left + 14, grid.legendOf(from) + 7);
    }
}

/// All cells of one colour, with that of the legend, are one path; neighbours in a row are one
/// rectangle of it.
void drawCells(Out& out, Lookup const& map, Grid const& grid, Span span) {
    std::array<std::string, colourCount + 1> paths; // the last one: no finite number
    const auto colourAt = [&](std::size_t column, std::size_t row) {
        const double value = map.values.numbers[column * grid.rows + row];
        return std::isfinite(value) ? colourOf(value, span) : colourCount;
    };
    for (std::size_t row = 0; row < grid.rows; ++row) {
        for (std::size_t column = 0; column < grid.columns;) {
            const std::size_t colour = colourAt(column, row);
            std::size_t end = column + 1;
            while (end < grid.columns && colourAt(end, row) == colour) {
                ++end;
            }
            addRectangle(paths.at(colour),
                         grid.xOf(double(column)),
                         grid.yOf(double(row + 1)),
                         grid.xOf(double(end)),
                         grid.yOf(double(row)));
            column = end;
        }
    }
    for (std::size_t colour = 0; colour < colourCount; ++colour) {
        addToLegend(paths.at(colour), grid, colour, span);
    }
    for (std::size_t colour = 0; colour < paths.size(); ++colour) {
        if (paths.at(colour).empty()) {
            continue;
        }
        if (colour == colourCount) {
            out << "<path class=\"bad\" d=\"";
        } else {
            out << "<path class=\"c" << colour << "\" d=\"";
        }
        out << Markup{paths.at(colour)} << "\"/>";
    }
}

/// Values row by row, as lines of equal values are looked for.
std::vector<double> byRows(Lookup const& map, Grid const& grid) {
    std::vector<double> values;
    for (std::size_t row = 0; row < grid.rows; ++row) {
        for (std::size_t column = 0; column < grid.columns; ++column) {
            values.push_back(map.values.numbers[column * grid.rows + row]);
        }
    }
    return values;
}

void drawIsolines(Out& out, Lookup const& map, Grid const& grid, Span span) {
    if (grid.columns < leastForLines || grid.rows < leastForLines) {
        return;
    }
    const std::vector<double> values = byRows(map, grid);
    for (const double level : ticks(span, 8)) {
        if (!(level > span.low && level < span.high)) {
            continue;
        }
        const std::vector<Segment> pieces = isoline(values, grid.columns, level);
        if (pieces.empty()) {
            continue;
        }
        if (fraction(level, span) > 0.55) {
            out << "<path class=\"iso dark\" d=\"";
        } else {
            out << "<path class=\"iso\" d=\"";
        }
        for (Segment const& piece : pieces) {
            out << "M" << Px{grid.xOf(piece.from.column + 0.5)} << " "
                << Px{grid.yOf(piece.from.row + 0.5)} << "L" << Px{grid.xOf(piece.to.column + 0.5)}
                << " " << Px{grid.yOf(piece.to.row + 0.5)};
        }
        Segment const& middle = pieces[pieces.size() / 2];
        out << "\"/><text class=\"mid halo\" x=\""
            << Px{grid.xOf((middle.from.column + middle.to.column + 1.0) / 2.0)} << "\" y=\""
            << Px{grid.yOf((middle.from.row + middle.to.row + 1.0) / 2.0) + 4} << "\">"
            << labelText(level) << "</text>";
    }
}

void drawChanged(Out& out, Drawn const& drawn, Grid const& grid) {
    for (const std::size_t place : drawn.changed) {
        const std::size_t column = place / grid.rows;
        out << "<rect class=\"changed\" x=\"" << Px{grid.xOf(double(column)) + 1.5} << "\" y=\""
            << Px{grid.yOf(double(place % grid.rows + 1)) + 1.5} << "\" width=\""
            << Px{grid.wide - 3} << "\" height=\"" << Px{grid.high - 3} << "\"/>";
    }
}

/// The points of the second axis, at the middle of their cells.
void drawRowLabels(Out& out, LookupAxis const& axis, Grid const& grid) {
    out << "<g class=\"end\">";
    double free = 1e9;
    for (std::size_t row = 0; row < grid.rows; ++row) {
        const double y = grid.yOf(double(row) + 0.5) + 4;
        if (y > free) {
            continue;
        }
        free = y - 14;
        out << "<text x=\"" << Px{grid.box.left - 6} << "\" y=\"" << Px{y} << "\">"
            << shortened(axis.points.texts[row], 8) << "</text>";
    }
    out << "</g><text class=\"title\" x=\"4\" y=\"" << Px{grid.box.top - 10} << "\">"
        << shortenedTo(grid.box.right + 10, axis.title()) << "</text>";
}

/// What the colours of the legend stand for.
struct Legend {
    struct Number {
        double part; ///< Of the legend, from below.
        std::string text;
    };
    std::string title;
    std::vector<Number> numbers{};

    Legend(std::string const& unit, Span span)
        : title(shortened(unit.empty() ? "Value" : "[" + unit + "]", 14)) {
        if (!(span.low < span.high)) {
            numbers.push_back({0.5, labelText(span.low)});
            return;
        }
        for (const double part : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            numbers.push_back({part, labelText(span.low * (1.0 - part) + span.high * part)});
        }
    }
    double width() const {
        double widest = std::max(68.0, widthOfBoldText(title) - 20);
        for (Number const& number : numbers) {
            widest = std::max(widest, widthOfLabel(number.text));
        }
        return 20 + widest;
    }
};

void drawLegend(Out& out, Legend const& legend, Grid const& grid) {
    const double left = grid.legendLeft();
    out << "<text class=\"title\" x=\"" << Px{left} << "\" y=\"" << Px{grid.box.top - 10} << "\">"
        << legend.title << "</text>";
    for (Legend::Number const& number : legend.numbers) {
        out << "<text x=\"" << Px{left + 20} << "\" y=\"" << Px{grid.legendOf(number.part) + 4}
            << "\">" << number.text << "</text>";
    }
}

} // namespace

void drawMap(Out& out, Drawn const& drawn, bool isAlone) {
    Lookup const& map = drawn.lookup;
    const Grid grid(map);
    const Span span = drawn.scale;
    const Legend legend(map.unit, span);
    const double width = grid.legendLeft() + legend.width();
    beginPicture(out,
                 width,
                 std::max(grid.box.bottom, marginTop + 96) + 48,
                 "Map of " + map.title() + " over " + map.axes[0].title() + " and " +
                     map.axes[1].title() + ", " + std::to_string(grid.columns) + " x " +
                     std::to_string(grid.rows) + " values",
                 isAlone);
    if (!isAlone) {
        out << " data-kind=\"map\" data-x=\"" << Px{grid.box.left} << " " << Px{grid.box.right}
            << " " << grid.columns << "\" data-y=\"" << Px{grid.box.top} << " "
            << Px{grid.box.bottom} << " " << grid.rows << "\" data-a=\"" << map.axes[0].title()
            << "\" data-b=\"" << map.axes[1].title() << "\"";
    }
    out << ">";
    drawCells(out, map, grid, span);
    drawIsolines(out, map, grid, span);
    drawChanged(out, drawn, grid);
    std::vector<double> places;
    for (std::size_t column = 0; column < grid.columns; ++column) {
        places.push_back(grid.xOf(double(column) + 0.5));
    }
    drawBelow(out, grid.box, labelsOf(map.axes[0], places), map.axes[0].title(), width);
    drawRowLabels(out, map.axes[1], grid);
    drawLegend(out, legend, grid);
    out << "</svg>";
}

} // namespace velum::html
