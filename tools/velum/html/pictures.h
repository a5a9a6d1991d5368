#pragma once

#include "html/lookup.h"
#include "html/out.h"
#include "html/scale.h"

#include <set>

namespace velum::html {

/// A lookup table to draw.
struct Drawn {
    Lookup const& lookup;
    /// Places of values that differ from another release.
    std::set<std::size_t> const& changed;
    /// What colours and heights stand for: the same for pictures that one compares.
    Span scale;
};

/// No table has more points an axis than this where it is drawn.
inline constexpr std::size_t mostPoints = 120;
inline constexpr std::size_t mostCurvePoints = 500;

/// Begins an SVG picture with a size and a sentence about it for people who can't see it.
/// `isAlone`: it is a file of its own, with its style sheet inside.
void beginPicture(Out& out, double width, double height, std::string_view label, bool isAlone);

/// A line with points over the only axis.
void drawCurve(Out& out, Drawn const& drawn, bool isAlone = false);
/// Filled cells over two axes, with lines of equal values and a legend.
void drawMap(Out& out, Drawn const& drawn, bool isAlone = false);
/// A line over the first axis for each point of the second one.
void drawFamily(Out& out, Drawn const& drawn);

} // namespace velum::html
