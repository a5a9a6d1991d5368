#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

TEST(WholeNumbers, AreReadInEveryBaseOfTheSchema) {
    const std::pair<std::string_view, std::int32_t> rows[] = {{"0", 0},
                                                              {"32", 32},
                                                              {" 8\n", 8},
                                                              {"+7", 7},
                                                              {"-5", -5},
                                                              {"0x1F", 31},
                                                              {"0B101", 5},
                                                              {"017", 15},
                                                              {"2147483647", 2147483647}};
    for (auto const& [text, value] : rows) {
        EXPECT_EQ(readWholeNumber(text).value, value) << text;
        EXPECT_FALSE(readWholeNumber(text).fault.has_value()) << text;
    }
}

TEST(WholeNumbers, OtherTextsAreRefusedWithTheReason) {
    for (const std::string_view text :
         {"", " ", "eight", "8 bit", "1.5", "0x", "08", "0b2", "--1"}) {
        EXPECT_EQ(readWholeNumber(text).fault, Reason::badNumber) << text;
    }
    for (const std::string_view text :
         {"2147483648", "-2147483648", "99999999999999999999", "0xFFFFFFFFF"}) {
        EXPECT_EQ(readWholeNumber(text).fault, Reason::outOfRange) << text;
    }
}

TEST(WholeNumbers, CountNothingBelowZero) {
    EXPECT_EQ(readCount("0").value, 0);
    EXPECT_EQ(readCount("-0").value, 0);
    EXPECT_EQ(readCount("0x10").value, 16);
    EXPECT_EQ(readCount("-1").fault, Reason::outOfRange);
    EXPECT_FALSE(readCount("-1").value.has_value());
    EXPECT_EQ(readCount("one").fault, Reason::badNumber);
}

TEST(RealNumbers, AreReadInEveryFormOfTheSchemaAndOfRealFiles) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::pair<std::string_view, double> rows[] = {{"0", 0.0},
                                                        {" -40 ", -40.0},
                                                        {"+0.5", 0.5},
                                                        {"1E-5", 1e-5},
                                                        {"1e1", 10.0},
                                                        {"1.0E+3", 1000.0},
                                                        {"0x1f", 31.0},
                                                        {"-0x8000", -32768.0},
                                                        {"0b101", 5.0},
                                                        {"010", 8.0},
                                                        {"010.5", 10.5},
                                                        {"true", 1.0},
                                                        {"false", 0.0},
                                                        {"INF", infinity},
                                                        {"+INF", infinity},
                                                        {"-INF", -infinity}};
    for (auto const& [text, value] : rows) {
        EXPECT_EQ(readRealNumber(text).value, value) << text;
        EXPECT_FALSE(readRealNumber(text).isRounded) << text;
    }
    EXPECT_TRUE(std::isnan(readRealNumber("NaN").value.value()));
}

TEST(RealNumbers, TellWhatADoubleCantHold) {
    for (const std::string_view text : {"",
                                        "-",
                                        "x",
                                        "inf",
                                        "nan",
                                        "1,5",
                                        "1 2",
                                        "0x",
                                        "0xg",
                                        "08",
                                        "0b2",
                                        "1e",
                                        "--1",
                                        "INFINITE"}) {
        EXPECT_EQ(readRealNumber(text).fault, Reason::badNumber) << text;
    }
    for (const std::string_view text : {"1e999", "0x1FFFFFFFFFFFFFFFF"}) {
        EXPECT_EQ(readRealNumber(text).fault, Reason::outOfRange) << text;
    }
    EXPECT_TRUE(readRealNumber("18446744073709551615").isRounded);
    EXPECT_TRUE(readRealNumber("0xFFFFFFFFFFFFFFFF").isRounded);
    EXPECT_FALSE(readRealNumber("18446744073709551616").isRounded);
    EXPECT_FALSE(readRealNumber("576460752303423488").isRounded);
    EXPECT_FALSE(readRealNumber("0.1").isRounded); // a fraction is what it is
}

TEST(RealNumbers, ReadBackFromTheirShortestText) {
    for (const double number : {0.1, 1.0 / 3.0, 1e-5, 99999.99999999999, -0.0, 5e-324}) {
        EXPECT_EQ(readRealNumber(numberText(number)).value, number);
    }
    EXPECT_EQ(numberText(0.5), "0.5");
    EXPECT_EQ(numberText(100.0), "100");
}

} // namespace velum::arxml
