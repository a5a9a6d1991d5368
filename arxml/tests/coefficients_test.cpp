#include <gtest/gtest.h>

#include <cmath>
#include <velum_arxml/notation/coefficients.h>

namespace velum::arxml {

namespace {

TEST(Coefficients, LoseZerosAtTheHighEndOnly) {
    const Coefficients trimmedOnes = trimmed({{0, 1, 0}, {1, 0, 0}});
    EXPECT_EQ(trimmedOnes, (Coefficients{{0, 1}, {1}}));
    EXPECT_EQ(trimmed({{0, 0}, {-0.0}}), (Coefficients{{0}, {0}}));
    EXPECT_FALSE(std::signbit(trimmed({{-0.0, 1}, {1}}).numerator.front()));
}

TEST(Coefficients, AreInvertedWhenTheyCanBe) {
    struct Row {
        Coefficients written;
        Coefficients inverse; // empty if there is none
    };
    const Row rows[] = {
        {{{-40, 0.1}, {1}}, {{40, 1}, {0.1}}},
        {{{10, 10}, {1}}, {{-10, 1}, {10}}},      // two equal numbers are none afterwards
        {{{60000}, {0, 1}}, {{-60000}, {0, -1}}}, // hyperbolic
        {{{1, 2, 0}, {4, 0, 0}}, {{-1, 4}, {2}}}, // of second order only as written
        {{{5, 0}, {1}}, {}},                      // a flat line
        {{{2, 4}, {1, 2}}, {}},                   // constant although it doesn't look so
        {{{0, 1, 1}, {1}}, {}},                   // a true polynomial
        {{{0}, {1}}, {}},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(inverted(row.written), row.inverse);
        if (!row.inverse.numerator.empty()) {
            EXPECT_TRUE(areEquivalent(inverted(row.inverse), row.written));
        }
    }
}

TEST(Coefficients, AreComparedAsFunctions) {
    EXPECT_TRUE(areEquivalent({{0, 1}, {2}}, {{0, 2}, {4}}));
    EXPECT_TRUE(areEquivalent({{0, 0.1}, {0.3}}, {{0, 1}, {3.0000000000000001}}));
    EXPECT_FALSE(areEquivalent({{0, 1}, {2}}, {{1, 1}, {2}}));
    EXPECT_FALSE(areEquivalent({{0, 1}, {2}}, {{0, 1}, {2, 1}}));
}

TEST(Coefficients, GiveTheLineFromInternalToPhysical) {
    Line line;
    ASSERT_TRUE(readLine({{40, 1}, {0.1}}, line));
    EXPECT_DOUBLE_EQ(line.bias, -40.0);
    EXPECT_DOUBLE_EQ(line.slope, 0.1);
    ASSERT_TRUE(readLine({{0, 8}, {1}}, line));
    EXPECT_DOUBLE_EQ(line.bias, 0.0);
    EXPECT_DOUBLE_EQ(line.slope, 0.125);
    EXPECT_FALSE(readLine({{-60000}, {0, -1}}, line));
    EXPECT_FALSE(readLine({{1}, {1}}, line));
    EXPECT_FALSE(readLine({{0, 1, 1}, {1}}, line));
}

} // namespace

} // namespace velum::arxml
