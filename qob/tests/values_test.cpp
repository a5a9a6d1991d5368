#include "fixture.h"
#include "qob/qob/boolean.h"
#include "qob/qob/integer.h"
#include "qob/qob/real.h"
#include "qob/qob/string.h"

#include <climits>

#include <cmath>
#include <limits>
#include <sstream>
#include <type_traits>
#include <unordered_set>

using QOB::Boolean;
using QOB::Integer;
using QOB::Real;
using QOB::String;

static_assert(sizeof(Integer) == 4 && std::is_trivially_copyable_v<Integer>);
static_assert(std::is_trivially_copyable_v<Real> && std::is_trivially_copyable_v<Boolean>);
static_assert(std::is_nothrow_move_constructible_v<String> && sizeof(String) == sizeof(void*));
static_assert(!std::is_convertible_v<char const*, Boolean>);
static_assert(Integer(3) < Integer(4) && Integer() < Integer(-5) && Integer() == Integer());

TEST(Values, DefaultIsInvalidAndEqualToItselfOnly) {
    EXPECT_FALSE(Integer().isValid());
    EXPECT_FALSE(Real().isValid());
    EXPECT_FALSE(Boolean().isValid());
    EXPECT_FALSE(String().isValid());
    EXPECT_EQ(Real(), Real());
    EXPECT_EQ(Boolean(), Boolean());
    EXPECT_EQ(String(), String());
    EXPECT_NE(Boolean(), Boolean(false));
    EXPECT_NE(String(), String(""));
    EXPECT_FALSE(Boolean() == false);
}

TEST(Values, InvalidStandsBeforeEveryValue) {
    EXPECT_LT(Integer(), Integer(INT_MIN + 1));
    EXPECT_LT(Real(), Real(-std::numeric_limits<double>::infinity()));
    EXPECT_LT(Real(), Real(std::nan("")));
    EXPECT_LT(String(), String(""));
    EXPECT_FALSE(Integer() < Integer());
    EXPECT_FALSE(Real() < Real());
}

TEST(Values, ReservedPatternsAreTheInvalidValue) {
    EXPECT_FALSE(Integer(INT_MIN).isValid());
    EXPECT_TRUE(Integer(INT_MIN + 1).isValid());
    EXPECT_TRUE(Real(std::nan("")).isValid());
    EXPECT_NE(Real(std::nan("")), Real(std::nan("")));
}

TEST(Values, CompareWithRawValues) {
    EXPECT_TRUE(Integer(3) == 3 && Integer(3) != 4 && Integer(3) < 4);
    EXPECT_TRUE(Real(0.5) == 0.5 && Real(0.5) < 1.0);
    EXPECT_TRUE(Boolean(true) == true && Boolean(false) != true);
    EXPECT_EQ(String("a"), "a");
}

TEST(Values, ConversionRefersIntoTheValue) {
    Boolean const yes(true);
    bool const& inside = yes;
    EXPECT_EQ(static_cast<void const*>(&inside), static_cast<void const*>(&yes));
}

TEST(Text, KeepsBytesAndConvertsWideText) {
    EXPECT_EQ(std::string(String(L"\u00e4\U0001F600")), "\xc3\xa4\xf0\x9f\x98\x80");
    EXPECT_EQ(std::wstring(String("\xc3\xa4")), L"\u00e4");
    EXPECT_EQ(String(std::string("a\0b", 3)).view().size(), 3U);
    EXPECT_FALSE(String(static_cast<char const*>(nullptr)).isValid());
    String const raw("\xff");
    EXPECT_EQ(std::string(raw), "\xff");
    EXPECT_EQ(messageOf([&] {
                  static_cast<void>(std::wstring(raw));
              }).rfind("The text is not well-formed UTF-8: ", 0),
              0U);
    EXPECT_EQ(messageOf([] {
                  static_cast<void>(String(std::wstring(1, wchar_t(0xD800))));
              }).rfind("The wide text is not well-formed: ", 0),
              0U);
}

TEST(Text, CopiesShareOneBlock) {
    String const text("shared");
    String const copy = text; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.view().data(), text.view().data());
    String moved = String(text);
    String& self = moved;
    moved = std::move(self);
    EXPECT_EQ(moved, text);
}

TEST(Numbers, TextReadsBackToTheSameNumber) {
    for (double const number : {0.1,
                                -0.0,
                                1e300,
                                5e-324,
                                1.0 / 3,
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(Real::fromString(Real(number).toString()), Real(number)) << number;
    }
    EXPECT_EQ(std::string(Real(0.1).toString()), "0.1");
    EXPECT_EQ(std::string(Real(std::nan("")).toString()), "nan");
    double const nan = Real::fromString("nan");
    EXPECT_TRUE(std::isnan(nan) && Real(nan).isValid());
    for (int const number : {0, -1, INT_MAX, INT_MIN + 1}) {
        EXPECT_EQ(Integer::fromString(Integer(number).toString()), Integer(number));
    }
    EXPECT_EQ(Integer::fromString(""), Integer());
    EXPECT_EQ(Real::fromString(""), Real());
    EXPECT_EQ(Boolean::fromString(""), Boolean());
    EXPECT_EQ(std::string(Integer().toString()), "");
}

TEST(Numbers, OtherTextsAreRefusedAndQuoted) {
    for (char const* const text : {"12x", " 1", "1 ", "2147483648", "-2147483648", "1.5", "+1"}) {
        EXPECT_EQ(messageOf([&] { Integer::fromString(text); }),
                  "The text \"" + std::string(text) + "\" is not a whole number of 32 bits.");
    }
    for (char const* const text : {"1e400", "1,5", "0x1p3z", "inf ", "number"}) {
        EXPECT_EQ(messageOf([&] { Real::fromString(text); }),
                  "The text \"" + std::string(text) +
                      "\" is not a number in the range of a double.");
    }
    EXPECT_EQ(messageOf([] { Boolean::fromString("yes"); }),
              "The text \"yes\" is not \"true\" or \"false\".");
}

TEST(Numbers, EqualValuesHashEqually) {
    EXPECT_EQ(hash_value(Real(0.0)), hash_value(Real(-0.0)));
    EXPECT_EQ(hash_value(Integer(-1)), 0xFFFF'FFFFU);
    std::unordered_set<String> const texts{"a", "b", String(), "a"};
    EXPECT_EQ(texts.size(), 3U);
    std::ostringstream out;
    out << Integer(5) << ' ' << Real(0.5) << ' ' << Boolean(true) << ' ' << String("x");
    EXPECT_EQ(out.str(), "5 0.5 true x");
}
