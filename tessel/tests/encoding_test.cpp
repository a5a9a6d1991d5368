#include "tessel/encoding.h"
#include "utf_conversion.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Tessel::EncodingError;
using Tessel::utf8ToWide;
using Tessel::wideToUtf8;
using Tessel::Detail::decodeUtf8;
using Tessel::Detail::encodeUtf8;
using Tessel::Detail::hex;
using namespace std::string_literals;

/// One code point in each form, written out by hand or formed by the language, not by the library.
struct Sample {
    std::string utf8;
    std::u16string utf16;
    std::u32string utf32;
};

std::vector<Sample> const& samples() {
    static const std::vector<Sample> all = {
        {"", u"", U""},
        {"32|bit", u"32|bit", U"32|bit"},
        {"a\0b"s, u"a\0b"s, U"a\0b"s},
        {"\x7F", u"\x7F", U"\x7F"},
        {"\xC2\x80", u"\u0080", U"\u0080"},
        {"\xDF\xBF", u"\u07FF", U"\u07FF"},
        {"\xE0\xA0\x80", u"\u0800", U"\u0800"},
        {"\xED\x9F\xBF", u"\uD7FF", U"\uD7FF"},
        {"\xEE\x80\x80", u"\uE000", U"\uE000"},
        {"\xEF\xBF\xBF", u"\uFFFF", U"\uFFFF"},
        {"\xF0\x90\x80\x80", u"\U00010000", U"\U00010000"},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF", U"\U0010FFFF"},
        {"Gr\xC3\xB6\xC3\x9F"
         "e \xE2\x82\xAC \xF0\x9F\x98\x80!",
         u"Größe € 😀!",
         U"Größe € 😀!"},
    };
    return all;
}

template <class Call>
std::string refusal(Call call) {
    try {
        call();
    } catch (EncodingError const& error) {
        return error.what();
    }
    return "accepted";
}

TEST(Encoding, TextsReadTheSameInEveryForm) {
    for (Sample const& sample : samples()) {
        SCOPED_TRACE(sample.utf8);
        EXPECT_EQ(decodeUtf8<char16_t>(sample.utf8), sample.utf16);
        EXPECT_EQ(decodeUtf8<char32_t>(sample.utf8), sample.utf32);
        EXPECT_EQ(encodeUtf8<char16_t>(sample.utf16), sample.utf8);
        EXPECT_EQ(encodeUtf8<char32_t>(sample.utf32), sample.utf8);
        EXPECT_EQ(wideToUtf8(utf8ToWide(sample.utf8)), sample.utf8);
    }
    EXPECT_EQ(utf8ToWide("Gr\xC3\xB6\xC3\x9F"
                         "e"),
              L"Größe");
}

TEST(Encoding, EveryCodePointSurvivesAndEverySurrogateIsRefused) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        const std::u32string text(1, code);
        if (code >= 0xD800 && code <= 0xDFFF) {
            ASSERT_THROW(encodeUtf8<char32_t>(text), EncodingError) << hex("U+", code, 4);
            ASSERT_THROW(encodeUtf8<char16_t>(std::u16string(1, static_cast<char16_t>(code))),
                         EncodingError)
                << hex("U+", code, 4);
            continue;
        }
        const std::string utf8 = encodeUtf8<char32_t>(text);
        ASSERT_EQ(decodeUtf8<char32_t>(utf8), text) << hex("U+", code, 4);
        ASSERT_EQ(encodeUtf8<char16_t>(decodeUtf8<char16_t>(utf8)), utf8) << hex("U+", code, 4);
    }
}

TEST(Encoding, MalformedUtf8IsRefusedWithItsPlaceAndCause) {
    const auto of = [](std::string_view text) { return refusal([&] { utf8ToWide(text); }); };
    EXPECT_EQ(of("ab\x80"), "Byte (0x80) at offset (2) does not begin a UTF-8 sequence.");
    EXPECT_EQ(of("\xFF"), "Byte (0xFF) at offset (0) does not begin a UTF-8 sequence.");
    EXPECT_EQ(of("\xF8\x88\x80\x80\x80"),
              "Byte (0xF8) at offset (0) does not begin a UTF-8 sequence.");
    EXPECT_EQ(of("x\xC3("),
              "Byte (0x28) at offset (2) does not continue the UTF-8 sequence before it.");
    EXPECT_EQ(of("\xE2\x82\xC3\xB6"),
              "Byte (0xC3) at offset (2) does not continue the UTF-8 sequence before it.");
    EXPECT_EQ(of("x\xE2\x82"), "UTF-8 sequence at offset (1) is cut off by the end of the text.");
    EXPECT_EQ(of("\xF0"), "UTF-8 sequence at offset (0) is cut off by the end of the text.");
    EXPECT_EQ(of("\xC0\x80"),
              "UTF-8 sequence at offset (0) is longer than its character (U+0000) needs.");
    EXPECT_EQ(of("\xE0\x9F\xBF"),
              "UTF-8 sequence at offset (0) is longer than its character (U+07FF) needs.");
    EXPECT_EQ(of("\xF0\x8F\xBF\xBF"),
              "UTF-8 sequence at offset (0) is longer than its character (U+FFFF) needs.");
    EXPECT_EQ(of("\xED\xA0\x80"), "UTF-8 sequence at offset (0) encodes a surrogate (U+D800).");
    EXPECT_EQ(of("\xED\xBF\xBF"), "UTF-8 sequence at offset (0) encodes a surrogate (U+DFFF).");
    EXPECT_EQ(of("\xF4\x90\x80\x80"),
              "UTF-8 sequence at offset (0) encodes a number (U+110000) above U+10FFFF.");
}

TEST(Encoding, NoSequenceOfBytesPassesUnlessItIsWhatEncodingWrites) {
    // All texts of up to three bytes over the values at which the rules change.
    const std::string edges = "A\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xED\xEF\xF0\xF4"
                              "\xF5\xFF";
    std::size_t accepted = 0;
    const auto check = [&](std::string const& text) {
        try {
            const std::u32string wide = decodeUtf8<char32_t>(text);
            EXPECT_EQ(encodeUtf8<char32_t>(wide), text);
            ++accepted;
        } catch (EncodingError const&) { // NOLINT(bugprone-empty-catch): refusal is the other way
        }
    };
    for (const char a : edges) {
        check({a});
        for (const char b : edges) {
            check({a, b});
            for (const char c : edges) {
                check({a, b, c});
            }
        }
    }
    // A and DEL; C2 or DF with one of six followers; E0 with two, ED with four, EF with six second
    // bytes, each with six third ones: 2 + (4 + 12) + (8 + 24 + 24 + 72).
    EXPECT_EQ(accepted, 2U + (4U + 12U) + (8U + 2U * 24U + 72U));
}

TEST(Encoding, MalformedWideTextIsRefusedWithItsPlaceAndCause) {
    const auto of16 = [](std::u16string const& text) {
        return refusal([&] { encodeUtf8<char16_t>(text); });
    };
    const std::u16string high(1, char16_t{0xD83D});
    const std::u16string low(1, char16_t{0xDE00});
    const std::string lonely = "is a surrogate that belongs to no pair.";
    EXPECT_EQ(of16(u"ab" + high), "Wide character (0xD83D) at index (2) " + lonely);
    EXPECT_EQ(of16(u"a" + high + u"b"), "Wide character (0xD83D) at index (1) " + lonely);
    EXPECT_EQ(of16(high + high + low), "Wide character (0xD83D) at index (0) " + lonely);
    EXPECT_EQ(of16(high + low + low), "Wide character (0xDE00) at index (2) " + lonely);

    const auto of32 = [](std::u32string const& text) {
        return refusal([&] { encodeUtf8<char32_t>(text); });
    };
    EXPECT_EQ(of32({0x41, 0xD83D, 0xDE00}), "Wide character (0xD83D) at index (1) " + lonely);
    EXPECT_EQ(of32({0x110000}), "Wide character (0x110000) at index (0) is above U+10FFFF.");
    EXPECT_EQ(refusal([] { wideToUtf8(std::wstring(1, static_cast<wchar_t>(0xDC00))); }),
              "Wide character (0xDC00) at index (0) " + lonely);
    if constexpr (sizeof(wchar_t) > 2) {
        // A negative wchar_t, where it is signed.
        EXPECT_EQ(refusal([] { wideToUtf8(std::wstring(1, static_cast<wchar_t>(-1))); }),
                  "Wide character (0xFFFFFFFF) at index (0) is above U+10FFFF.");
    }
}

} // namespace
