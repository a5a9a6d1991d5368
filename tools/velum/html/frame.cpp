#include "html/frame.h"

#include <algorithm>
#include <cmath>

namespace velum::html {

namespace {

constexpr double widthOfCharacter = 7.0;
constexpr double widthOfBold = 7.2;

/// Whether a byte of UTF-8 begins a character.
bool beginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::size_t countOfCharacters(std::string const& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

} // namespace

double acrossOf(double number, Span span, Box const& box) {
    return box.left + fraction(number, span) * box.width();
}

double upOf(double number, Span span, Box const& box) {
    return box.bottom - fraction(number, span) * box.height();
}

void drawUpright(Out& out, Box const& box, Span span, std::string_view title) {
    const std::vector<double> lines = ticks(span, 5);
    out << "<path class=\"grid\" d=\"";
    for (const double tick : lines) {
        out << "M" << Px{box.left} << " " << Px{upOf(tick, span, box)} << "H" << Px{box.right};
    }
    out << "\"/><g class=\"end\">";
    for (const double tick : lines) {
        const std::string text = labelText(tick);
        out << "<text x=\"" << Px{std::max(box.left - 6, widthOfLabel(text))} << "\" y=\""
            << Px{upOf(tick, span, box) + 4} << "\">" << text << "</text>";
    }
    out << "</g><text class=\"title\" x=\"" << Px{4} << "\" y=\"" << Px{box.top - 12} << "\">"
        << shortened(std::string(title), 60) << "</text>";
}

void drawBelow(Out& out,
               Box const& box,
               std::vector<Label> const& labels,
               std::string_view title,
               double width) {
    out << "<path class=\"axis\" d=\"";
    for (Label const& label : labels) {
        out << "M" << Px{label.across} << " " << Px{box.bottom} << "v4";
    }
    out << "\"/><g class=\"mid\">";
    double free = -1e9;
    for (Label const& label : labels) {
        const std::string text = shortened(label.text, 12);
        const double half = widthOfLabel(text) / 2.0;
        const double x = std::min(label.across, width - half);
        if (x - half < free) {
            continue;
        }
        free = x + half + 8.0;
        out << "<text x=\"" << Px{x} << "\" y=\"" << Px{box.bottom + 17} << "\">" << text
            << "</text>";
    }
    out << "</g>";
    const std::string shown = shortenedTo(width - 8, std::string(title));
    const double half = widthOfBoldText(shown) / 2.0;
    const double middle =
        std::max(std::min((box.left + box.right) / 2.0, width - 4 - half), 4 + half);
    out << "<text class=\"title mid\" x=\"" << Px{middle} << "\" y=\"" << Px{box.bottom + 36}
        << "\">" << shown << "</text>";
}

std::vector<double> placesOf(LookupAxis const& axis, Box const& box) {
    const bool isToScale = axis.isRising() && axis.points.size() > 1;
    const Span span = isToScale ? spanOf(axis.points.numbers)
                                : Span{0.0, std::max(1.0, double(axis.points.size()) - 1.0)};
    std::vector<double> places;
    for (std::size_t i = 0; i < axis.points.size(); ++i) {
        const double number = isToScale ? axis.points.numbers[i] : static_cast<double>(i);
        places.push_back(axis.points.size() == 1 ? (box.left + box.right) / 2.0
                                                 : acrossOf(number, span, box));
    }
    return places;
}

std::vector<Label> labelsOf(LookupAxis const& axis, std::vector<double> const& places) {
    std::vector<Label> labels;
    for (std::size_t i = 0; i < places.size(); ++i) {
        labels.push_back({places[i], axis.points.texts[i]});
    }
    return labels;
}

std::string shortenedTo(double width, std::string const& title) {
    return shortened(title, static_cast<std::size_t>(std::max(width / widthOfBold, 1.0)));
}

double widthOfLabel(std::string const& text) {
    return static_cast<double>(countOfCharacters(text)) * widthOfCharacter;
}

double widthOfBoldText(std::string const& text) {
    return static_cast<double>(countOfCharacters(text)) * widthOfBold;
}

std::string shortened(std::string const& text, std::size_t most) {
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        characters += beginsCharacter(text[i]) ? 1 : 0;
        if (characters > most) {
            return text.substr(0, i) + "…";
        }
    }
    return text;
}

} // namespace velum::html
