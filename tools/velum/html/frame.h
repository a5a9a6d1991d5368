#pragma once

#include "html/lookup.h"
#include "html/out.h"
#include "html/scale.h"

#include <string>
#include <vector>

namespace velum::html {

/// A rectangle on paper; `top` is the smaller number.
struct Box {
    double left;
    double top;
    double right;
    double bottom;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
};

/// Where the numbers of a range lie in a box.
double acrossOf(double number, Span span, Box const& box);
double upOf(double number, Span span, Box const& box);

/// Lines and labels at round numbers of the vertical axis, and its title.
void drawUpright(Out& out, Box const& box, Span span, std::string_view title);

/// A label below a box.
struct Label {
    double across;
    std::string text;
};

/// Labels below a box, as many as have room, and the title of the axis: all within `width`, that of
/// the picture.
void drawBelow(Out& out,
               Box const& box,
               std::vector<Label> const& labels,
               std::string_view title,
               double width);

/// The places of the points of an axis: to scale if they rise, else at equal distances.
std::vector<double> placesOf(LookupAxis const& axis, Box const& box);

/// The labels that the points of an axis have at these places.
std::vector<Label> labelsOf(LookupAxis const& axis, std::vector<double> const& places);

/// A text that is cut if it is longer than so many characters.
std::string shortened(std::string const& text, std::size_t most);
/// A title that is cut where it would be wider than that.
std::string shortenedTo(double width, std::string const& title);

/// About how wide a label is, and a title.
double widthOfLabel(std::string const& text);
double widthOfBoldText(std::string const& text);

} // namespace velum::html
