#include "html/escape.h"
#include "html/isolines.h"
#include "html/lookup.h"
#include "html/out.h"
#include "html/scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace velum::html {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

std::string escaped(std::string_view text) {
    std::string markup;
    appendEscaped(markup, text);
    return markup;
}

TEST(Escape, makes_markup_and_what_cannot_be_seen_visible_text) {
    struct Case {
        std::string_view text;
        std::string_view markup;
    };
    using namespace std::string_view_literals;
    for (auto const& [text, markup] : {
             Case{"</script><b a='x' b=\"&amp;\">",
                  "&lt;/script&gt;&lt;b a=&#39;x&#39; b=&quot;&amp;amp;&quot;&gt;"},
             Case{"a\0b\n\t\x1b\x7f"sv, "a␀b␊␉␛␡"},
             Case{"\xC2\x85", "\uFFFD"},
             Case{"a\u202Eb\u2066\u200B\uFEFF", "a[U+202E]b[U+2066][U+200B][U+FEFF]"},
             Case{"\u05D0\u0644\u200D\u00B0\u20AC\U0001F600",
                  "\u05D0\u0644\u200D\u00B0\u20AC\U0001F600"},
             Case{"\xFF\xC0\xAF\xE2\x82", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
             Case{"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
             Case{"\xEF\xBF\xBE", "\uFFFD"},
         }) {
        EXPECT_EQ(escaped(text), markup);
    }
}

TEST(Escape, leaves_no_markup_and_no_control_character_of_any_bytes) {
    std::mt19937 random(21);
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 40, ' ');
        for (char& c : text) {
            c = random() % 4 == 0 ? "<>&\"'\xE2\x80\xAE\xC2"[random() % 9]
                                  : static_cast<char>(random() % 256);
        }
        const std::string markup = escaped(text);
        EXPECT_EQ(markup.find_first_of("<>\"'"), std::string::npos);
        EXPECT_TRUE(std::none_of(markup.begin(), markup.end(), [](char c) {
            return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        }));
        // What comes out is UTF-8 without anything to escape but its own entities.
        std::string entities = markup;
        for (std::size_t at = 0; (at = entities.find('&', at)) != std::string::npos;) {
            const std::size_t end = entities.find(';', at);
            ASSERT_NE(end, std::string::npos);
            entities.erase(at, end - at + 1);
        }
        EXPECT_EQ(escaped(entities), entities);
    }
}

TEST(Out, escapes_all_but_literals_and_stops_at_a_sink_that_fails) {
    std::string page;
    Out out([&page](std::string_view piece) {
        page += piece;
        return true;
    });
    out << "<b>" << std::string("<i>") << std::string_view("&") << 7 << Px{1.26} << Px{-0.01}
        << "</b>";
    EXPECT_TRUE(out.finish());
    EXPECT_EQ(page, "<b>&lt;i&gt;&amp;71.30</b>");

    int pieces = 0;
    Out failing([&pieces](std::string_view) { return ++pieces < 3; });
    const std::string text(10'000, 'x');
    for (int i = 0; i < 100; ++i) {
        failing << text;
    }
    EXPECT_FALSE(failing.finish());
    EXPECT_EQ(pieces, 3);
}

TEST(Scale, places_and_colours_stay_within_the_range_whatever_the_numbers) {
    const double numbers[] = {-infinity, -largest, -1.0, 0.0, 5e-324, 1.0, largest, infinity, NAN};
    for (const double low : numbers) {
        for (const double high : numbers) {
            const Span span = widened(spanOf({low, high}));
            ASSERT_LT(span.low, span.high);
            for (const double number : {span.low, span.high}) {
                const double place = fraction(number, span);
                EXPECT_TRUE(place >= -1e-9 && place <= 1.0 + 1e-9) << low << " " << high;
                EXPECT_LT(colourOf(number, span), colourCount);
            }
            EXPECT_LE(ticks(span, 5).size(), 13U);
        }
    }
    EXPECT_EQ(colourOf(0.0, {0.0, 1.0}), 0U);
    EXPECT_EQ(colourOf(1.0, {0.0, 1.0}), colourCount - 1);
    EXPECT_EQ(ticks({-1.0, 9.0}, 5), (std::vector{0.0, 2.0, 4.0, 6.0, 8.0}));
    EXPECT_EQ(labelText(0.1 + 0.2), "0.3");
}

/// A line crosses each side of the grid of which one end is below the level and the other isn't.
TEST(Isolines, cross_each_side_between_below_and_not_below_once) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const std::size_t columns = 2 + random() % 6;
        const std::size_t rows = 2 + random() % 6;
        std::vector<double> values(columns * rows);
        for (double& value : values) {
            value = static_cast<double>(random() % 7);
        }
        const double level = static_cast<double>(random() % 7);
        std::size_t expected = 0; // ends of pieces: an inner side belongs to two squares
        for (std::size_t row = 0; row < rows; ++row) {
            for (std::size_t column = 0; column < columns; ++column) {
                const bool isBelow = values[row * columns + column] < level;
                if (column + 1 < columns &&
                    isBelow != (values[row * columns + column + 1] < level)) {
                    expected += row == 0 || row + 1 == rows ? 1 : 2;
                }
                if (row + 1 < rows && isBelow != (values[(row + 1) * columns + column] < level)) {
                    expected += column == 0 || column + 1 == columns ? 1 : 2;
                }
            }
        }
        const std::vector<Segment> pieces = isoline(values, columns, level);
        EXPECT_EQ(pieces.size() * 2, expected);
        for (Segment const& piece : pieces) {
            for (GridPoint const& end : {piece.from, piece.to}) {
                const auto column = static_cast<std::size_t>(end.column);
                const auto row = static_cast<std::size_t>(end.row);
                const double across = end.column - std::floor(end.column);
                const double down = end.row - std::floor(end.row);
                const double from = values[row * columns + column];
                const double to = across > 0 ? values[row * columns + column + 1]
                                  : down > 0 ? values[(row + 1) * columns + column]
                                             : from;
                EXPECT_NEAR(from + (to - from) * std::max(across, down), level, 1e-9);
            }
        }
    }
    EXPECT_TRUE(isoline({0.0, NAN, 1.0, 1.0}, 2, 0.5).empty());
}

Lookup mapOf(std::size_t columns, std::size_t rows) {
    Lookup map{"m", "", {{"x", "", {}}, {"y", "", {}}}, {}, {}, {}};
    for (std::size_t i = 0; i < columns; ++i) {
        map.axes[0].points.add(std::to_string(i));
    }
    for (std::size_t i = 0; i < rows; ++i) {
        map.axes[1].points.add(std::to_string(i));
    }
    for (std::size_t i = 0; i < columns * rows; ++i) {
        map.values.add(std::to_string(i / rows + i % rows));
    }
    return map;
}

TEST(Lookups, a_large_map_is_reduced_to_means_of_all_its_values) {
    for (auto const& [columns, rows] : {std::pair{250, 7}, {7, 250}, {121, 121}, {120, 120}}) {
        const Lookup whole = mapOf(std::size_t(columns), std::size_t(rows));
        const Lookup small = reduced(whole, 120);
        EXPECT_LE(small.axes[0].points.size(), 120U);
        EXPECT_LE(small.axes[1].points.size(), 120U);
        EXPECT_EQ(small.values.size(), small.axes[0].points.size() * small.axes[1].points.size());
        EXPECT_EQ(small.notes.empty(), columns <= 120 && rows <= 120);
        const Span span = spanOf(small.values.numbers);
        EXPECT_GE(span.low, 0.0);
        EXPECT_LE(span.high, columns + rows - 2.0);
    }
}

} // namespace

} // namespace velum::html
