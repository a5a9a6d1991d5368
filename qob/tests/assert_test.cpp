#include "fixture.h"
#include "qob/qob/assert.h"

#include <cstring>
#include <locale>
#include <string>

TEST(Assertion, FailureTellsMessageAndPlaceAndNote) {
    EXPECT_EQ(failureOf([] {
                  QOB::LocalAsserter("F", 7, "") =
                      QOB::AsserterEx<QOB::Exception>("sequence is empty");
              }),
              "Assertion failed: sequence is empty at F:7: ");
    EXPECT_EQ(failureOf([] {
                  QOB::LocalAsserter("F", 7, "note") =
                      QOB::AsserterEx<QOB::UnImplementedException>(false, "%d of %s", 2, "three");
              }),
              "Assertion failed: 2 of three at F:7: note");
}

namespace {

/// Compiles without a warning only if the compiler knows that a failure doesn't return.
int atLeastOne(int number) {
    if (number >= 1) {
        return number;
    }
    QOB_FAIL("%d is too few", number);
}

} // namespace

TEST(Assertion, EachKindOfCheckFailsInTheSameShapeAndOnlyIfItsConditionIsFalse) {
    EXPECT_EQ(atLeastOne(1), 1);
    QOB_REQUIRE(true, "unused");
    QOB_INVARIANT(true, "unused");
    auto const at = [](char const* text, int line) {
        return "Assertion failed: " + std::string(text) +
               " at qob/tests/assert_test.cpp:" + std::to_string(line) + ": ";
    };
    EXPECT_NE(failureOf([] { atLeastOne(0); }).find("Assertion failed: 0 is too few at "),
              std::string::npos);
    EXPECT_EQ(failureOf([] { QOB_REQUIRE(false, "given"); }), at("given", __LINE__));
    EXPECT_EQ(failureOf([] { QOB_INVARIANT(false, "own"); }), at("own", __LINE__));
}

TEST(Assertion, TrueConditionFormatsNothing) {
    std::strcpy(QOB::Asserter::fLogBuf, "as it was");
    QOB::LocalAsserter("F", 7, "") = QOB::AsserterEx<QOB::Exception>(true, "%s", "changed");
    EXPECT_STREQ(QOB::Asserter::fLogBuf, "as it was");
}

TEST(Assertion, LongMessageIsCutToTheBuffer) {
    std::string const text(10000, 'x');
    std::string const failure = failureOf([&] { QOB_FAIL("%s", text.c_str()); });
    EXPECT_NE(failure.find("Assertion failed: " + std::string(4096, 'x') + " at "),
              std::string::npos);
}

TEST(Assertion, FormatterThatFailsLeavesAnEmptyMessage) {
    // No character of the "C" locale has this number, so the formatter reports failure.
    wchar_t const unprintable[] = {wchar_t(0x10FFFF), 0};
    EXPECT_EQ(failureOf([&] {
                  QOB::LocalAsserter("F", 1, "") =
                      QOB::AsserterEx<QOB::Exception>("%ls", unprintable);
              }),
              "Assertion failed:  at F:1: ");
}

TEST(Assertion, EveryExceptionIsCaughtByTheHostsAndTheLanguagesBase) {
    EXPECT_THROW(QOB_FAIL("a"), std::exception);
    EXPECT_THROW(QOB_FAIL("a"), boost::exception);
    EXPECT_THROW(QOB_FAIL("a"), host::UserException);
    try {
        throw QOB::UnImplementedException("later");
    } catch (QOB::Exception const& failure) {
        std::unique_ptr<boost::exception_detail::clone_base const> const clone(failure.clone());
        EXPECT_THROW(clone->rethrow(), QOB::UnImplementedException);
    }
}

TEST(Assertion, PlaceIsRelativeToTheRepository) {
    EXPECT_NE(failureOf([] { QOB_FAIL("here"); }).find(" at qob/tests/assert_test.cpp:"),
              std::string::npos);
}

TEST(Assertion, LineIsToldTheSameInEveryLocale) {
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale(), new Grouping));
    std::string const failure = failureOf([] { QOB::internal::failAt("F", 1234567, "text"); });
    std::locale::global(before);
    EXPECT_EQ(failure, "Assertion failed: text at F:1234567: ");
}

TEST(IntegerIncDec, BringsTheNumberBackWhateverWayTheScopeIsLeft) {
    int counter = 3;
    try {
        QOB::IntegerIncDec const guard(&counter);
        EXPECT_EQ(counter, 4);
        throw std::runtime_error("out");
    } catch (std::runtime_error const&) {
    }
    EXPECT_EQ(counter, 3);
}
