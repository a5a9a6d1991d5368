#include "fixture.h"
#include "qob/qob/serializer/datatypestringrepresenter.h"
#include "qob/qob/util/utf8.h"

#include <rapidcheck.h>

using QOB::Serializer::DatatypeStringRepresenter;
using Parts = std::vector<std::wstring>;

TEST(Representer, JoinsPartsByABar) {
    DatatypeStringRepresenter const representer;
    EXPECT_EQ(representer.combineStrings({L"32", L"bit"}), L"32|bit");
    EXPECT_EQ(representer.combineStrings({L"a|b", L"\\", L""}), L"a\\|b|\\\\|");
    EXPECT_EQ(representer.splitString(L"32|bit"), (Parts{L"32", L"bit"}));
    EXPECT_EQ(representer.splitString(L"||"), (Parts{L"", L"", L""}));
    EXPECT_EQ(representer.splitString(L""), Parts{L""});
}

TEST(Representer, SplitInvertsCombine) {
    bool const holds = rc::check("split inverts combine for two or more parts", [] {
        auto const character = rc::gen::oneOf(rc::gen::element(L'|', L'\\', L'a'),
                                              rc::gen::inRange(wchar_t(0), wchar_t(0x3000)));
        auto const parts = *rc::gen::suchThat(
            rc::gen::container<Parts>(rc::gen::container<std::wstring>(character)),
            [](Parts const& candidate) { return candidate.size() >= 2; });
        DatatypeStringRepresenter const representer;
        std::wstring const text = representer.combineStrings(parts);
        RC_ASSERT(representer.splitString(text) == parts);

        // The short way gives the same wherever it takes a text.
        std::string const narrow = QOB::String(text);
        std::string_view first;
        std::string_view second;
        if (DatatypeStringRepresenter::splitPlainPair(narrow, first, second)) {
            RC_ASSERT(parts.size() == 2);
            RC_ASSERT(std::string(first) == std::string(QOB::String(parts[0])));
            RC_ASSERT(std::string(second) == std::string(QOB::String(parts[1])));
            RC_ASSERT(DatatypeStringRepresenter::combinePlainPair(first, second) == narrow);
        }
    });
    EXPECT_TRUE(holds);
}

TEST(Representer, ShortWayTakesPlainPairsOnly) {
    std::string_view first = "first";
    std::string_view second = "second";
    auto const split = [&](std::string_view text) {
        return DatatypeStringRepresenter::splitPlainPair(text, first, second);
    };
    for (char const* const text : {"", "32", "1|2|3", "1\\||bit", "\xc3\xa4|bit"}) {
        EXPECT_FALSE(split(text)) << text;
    }
    EXPECT_EQ(first, "first");
    EXPECT_TRUE(split("32|bit") && first == "32" && second == "bit");
    EXPECT_TRUE(split("|") && first.empty() && second.empty());
    EXPECT_EQ(DatatypeStringRepresenter::combinePlainPair("", "bit"), "|bit");
}

TEST(Representer, StrayBackslashIsNamed) {
    DatatypeStringRepresenter const representer;
    for (wchar_t const* const text : {L"ab\\", L"a|\\n"}) {
        EXPECT_EQ(messageOf([&] { static_cast<void>(representer.splitString(text)); }),
                  "The backslash at index (2) of the text stands neither before \"|\" nor before a "
                  "backslash.");
    }
}

TEST(Utf8, BecomesWideTextOrIsRefused) {
    EXPECT_EQ(QOB::util::UTF8ToUString("\xc3\xa4\xf0\x9f\x98\x80"), L"\u00e4\U0001F600");
    EXPECT_EQ(QOB::util::UTF8ToUString(nullptr), L"");
    EXPECT_EQ(messageOf([] {
                  static_cast<void>(QOB::util::UTF8ToUString("a\xc0\x80"));
              }).rfind("The text is not well-formed UTF-8: ", 0),
              0U);
}
