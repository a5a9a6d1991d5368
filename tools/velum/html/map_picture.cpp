#include "html/frame.h"
#include "html/isolines.h"
#include "html/pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

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
};

/// All cells of one colour are one path; neighbours in a row are one rectangle of it.
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
            std::string& path = paths.at(colour);
            Out piece([&path](std::string_view markup) {
                path += markup;
                return true;
            });
            piece << "M" << Px{grid.xOf(double(column))} << " " << Px{grid.yOf(double(row + 1))}
                  << "H" << Px{grid.xOf(double(end))} << "V" << Px{grid.yOf(double(row))} << "H"
                  << Px{grid.xOf(double(column))} << "z";
            piece.finish();
            column = end;
        }
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
    double free = 1e9;
    for (std::size_t row = 0; row < grid.rows; ++row) {
        const double y = grid.yOf(double(row) + 0.5) + 4;
        if (y > free) {
            continue;
        }
        free = y - 14;
        out << "<text class=\"end\" x=\"" << Px{grid.box.left - 6} << "\" y=\"" << Px{y} << "\">"
            << shortened(axis.points.texts[row], 8) << "</text>";
    }
    out << "<text class=\"title\" x=\"4\" y=\"" << Px{grid.box.top - 10} << "\">"
        << shortenedTo(grid.box.right + 10, axis.title()) << "</text>";
}

void drawLegend(Out& out, Lookup const& map, Grid const& grid, Span span, bool isFlat) {
    const double left = grid.box.right + 22;
    const double height = std::max(grid.box.height(), 96.0);
    const double step = height / double(colourCount);
    out << "<text class=\"title\" x=\"" << Px{left} << "\" y=\"" << Px{grid.box.top - 10} << "\">"
        << shortened(map.unit.empty() ? "Value" : "[" + map.unit + "]", 14) << "</text>";
    for (std::size_t colour = 0; colour < colourCount && !isFlat; ++colour) {
        out << "<rect class=\"c" << colour << "\" x=\"" << Px{left} << "\" y=\""
            << Px{grid.box.top + height - step * double(colour + 1)} << "\" width=\"14\" height=\""
            << Px{step + 0.2} << "\"/>";
    }
    if (isFlat) {
        out << "<rect class=\"c" << colourCount / 2 << "\" x=\"" << Px{left} << "\" y=\""
            << Px{grid.box.top + height / 2 - 7} << "\" width=\"14\" height=\"14\"/>";
    }
    for (const int quarter : {0, 1, 2, 3, 4}) {
        if (isFlat && quarter != 2) {
            continue;
        }
        const double part = quarter / 4.0;
        const double number = isFlat ? span.low : span.low * (1.0 - part) + span.high * part;
        out << "<text x=\"" << Px{left + 20} << "\" y=\""
            << Px{grid.box.top + height * (1.0 - part) + 4} << "\">" << labelText(number)
            << "</text>";
    }
}

} // namespace

void drawMap(Out& out, Drawn const& drawn, bool isAlone) {
    Lookup const& map = drawn.lookup;
    const Grid grid(map);
    const Span span = drawn.scale;
    const double width = grid.box.right + 110;
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
    drawLegend(out, map, grid, span, !(span.low < span.high));
    out << "</svg>";
}

} // namespace velum::html
