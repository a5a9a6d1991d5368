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
        RC_ASSERT(representer.splitString(representer.combineStrings(parts)) == parts);
    });
    EXPECT_TRUE(holds);
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
