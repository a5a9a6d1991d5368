#pragma once

#include <cstddef>
#include <vector>

namespace velum::html {

/// A place in a grid of values: column and row, between them too.
struct GridPoint {
    double column;
    double row;
};

struct Segment {
    GridPoint from;
    GridPoint to;
};

/// Where a grid of values (row by row) has a level: straight pieces between neighbours of which one
/// is below the level and the other isn't. No piece goes by a value that isn't finite.
std::vector<Segment> isoline(std::vector<double> const& values, std::size_t columns, double level);

} // namespace velum::html
