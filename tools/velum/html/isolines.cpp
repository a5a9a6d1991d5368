#include "html/isolines.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velum::html {

namespace {

/// Four neighbours, clockwise from the one at the column and row.
struct Square {
    std::array<GridPoint, 4> corners;
    std::array<double, 4> values;
};

bool isFinite(Square const& square) {
    return std::all_of(square.values.begin(), square.values.end(), [](double value) {
        return std::isfinite(value);
    });
}

/// Where the level lies on the side from one corner to the next.
GridPoint crossing(Square const& square, std::size_t side, double level) {
    const std::size_t next = (side + 1) % 4;
    const double from = square.values.at(side);
    const double to = square.values.at(next);
    const double part = (level / 2.0 - from / 2.0) / (to / 2.0 - from / 2.0);
    GridPoint const& a = square.corners.at(side);
    GridPoint const& b = square.corners.at(next);
    return {a.column + (b.column - a.column) * part, a.row + (b.row - a.row) * part};
}

void addSegments(Square const& square, double level, std::vector<Segment>& segments) {
    std::array<GridPoint, 4> crossed{};
    std::size_t count = 0;
    for (std::size_t side = 0; side < 4; ++side) {
        const bool isBelow = square.values.at(side) < level;
        if (isBelow != (square.values.at((side + 1) % 4) < level)) {
            crossed.at(count) = crossing(square, side, level);
            ++count;
        }
    }
    if (count == 2) {
        segments.push_back({crossed[0], crossed[1]});
    } else if (count == 4) {
        // A saddle: the mean tells which corners belong together.
        double mean = 0.0;
        for (const double value : square.values) {
            mean += value / 4.0;
        }
        const bool isFirstCut = (mean < level) != (square.values[0] < level);
        segments.push_back({crossed[0], crossed[isFirstCut ? 3 : 1]});
        segments.push_back({crossed[2], crossed[isFirstCut ? 1 : 3]});
    }
}

} // namespace

std::vector<Segment> isoline(std::vector<double> const& values, std::size_t columns, double level) {
    std::vector<Segment> segments;
    const std::size_t rows = columns == 0 ? 0 : values.size() / columns;
    for (std::size_t row = 0; row + 1 < rows; ++row) {
        for (std::size_t column = 0; column + 1 < columns; ++column) {
            const auto at = [&](std::size_t c, std::size_t r) { return values[r * columns + c]; };
            const auto x = static_cast<double>(column);
            const auto y = static_cast<double>(row);
            const Square square{{{{x, y}, {x + 1, y}, {x + 1, y + 1}, {x, y + 1}}},
                                {at(column, row),
                                 at(column + 1, row),
                                 at(column + 1, row + 1),
                                 at(column, row + 1)}};
            if (isFinite(square)) {
                addSegments(square, level, segments);
            }
        }
    }
    return segments;
}

} // namespace velum::html
