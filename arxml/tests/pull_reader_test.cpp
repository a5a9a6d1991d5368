#include "reading/pull_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace velum::arxml {

namespace {

/// A file with the given bytes, gone with the test.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string const& bytes)
        : path_(testing::TempDir() + "pull_reader_" +
                testing::UnitTest::GetInstance()->current_test_info()->name() + ".arxml") {
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~TemporaryFile() { std::filesystem::remove(path_); }
    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;

    std::string const& path() const { return path_; }

private:
    std::string path_;
};

const std::string opening = "<AUTOSAR xmlns=\"http://autosar.org/schema/r4.0\">";

using Placed = std::pair<std::string, Position>;

std::vector<Placed> placesOf(std::string const& bytes) {
    const TemporaryFile file(bytes);
    Names names;
    PullReader reader(file.path(), names);
    std::vector<Placed> places;
    for (;;) {
        switch (reader.next()) {
        case PullReader::Event::start:
            places.emplace_back(names.text(reader.name()), reader.position());
            break;
        case PullReader::Event::finished:
            return places;
        case PullReader::Event::end:
        case PullReader::Event::text:
            break;
        }
    }
}

TEST(PullReader, PlacesElementsWhereTheirTagsBegin) {
    const auto places =
        placesOf("\xEF\xBB\xBF<?xml version=\"1.0\"?><!-- <NO/> - > -->\n" + opening +
                 "<A x='>' y=\"!--'\"\n/>\n"
                 "  \xC3\xA4\xE2\x82\xAC<B><![CDATA[<NO/>]]]]><C/></B>\n"
                 "<?pi <NO/> ?><D\n>t</D></AUTOSAR>");
    const std::vector<Placed> expected = {
        {"AUTOSAR", {2, 1}}, {"A", {2, 49}}, {"B", {4, 5}}, {"C", {4, 27}}, {"D", {5, 14}}};
    EXPECT_EQ(places, expected);
}

TEST(PullReader, KeepsPlacesAcrossAllItsBuffers) {
    std::string bytes = opening;
    for (int line = 0; line < 70'000; ++line) {
        bytes += '\n';
        bytes.append(static_cast<std::size_t>(line % 23), ' ');
        bytes += "<A/>";
    }
    const auto places = placesOf(bytes + "</AUTOSAR>");
    ASSERT_EQ(places.size(), 70'001U);
    for (std::uint32_t line = 0; line < 70'000; ++line) {
        const Position expected{line + 2, line % 23 + 1};
        ASSERT_EQ(places[line + 1].second, expected) << line;
    }
}

TEST(PullReader, GivesTextsAndAttributesWhole) {
    const std::string text(50'000, 'x');
    const TemporaryFile file(opening + "<A BASE=\"a&amp;&#98;" + text + "\" DEST=\"\">" + text +
                             "<![CDATA[<&]]>&lt;" + text + "</A></AUTOSAR>");
    Names names;
    PullReader reader(file.path(), names);
    ASSERT_EQ(reader.next(), PullReader::Event::start);
    EXPECT_TRUE(reader.attributes().empty()); // a namespace declaration is none
    ASSERT_EQ(reader.next(), PullReader::Event::start);
    const auto attributes = reader.attributes();
    ASSERT_EQ(attributes.size(), 2U);
    EXPECT_EQ(attributes[0].name, "BASE");
    EXPECT_EQ(attributes[0].value, "a&b" + text);
    EXPECT_EQ(attributes[1].value, "");
    std::string met;
    while (reader.next() == PullReader::Event::text) {
        met += reader.text();
    }
    EXPECT_EQ(met, text + "<&<" + text);
}

TEST(PullReader, EndsTextsAtMarkupAndLeavesOutBlanksThatNobodyQuoted) {
    const TemporaryFile file(opening +
                             "\n <!--c--> x<!--c-->y&#32;<?p?>\t<![CDATA[ ]]> </AUTOSAR> ");
    Names names;
    PullReader reader(file.path(), names);
    ASSERT_EQ(reader.next(), PullReader::Event::start);
    std::vector<std::string> texts;
    while (reader.next() == PullReader::Event::text) {
        texts.emplace_back(reader.text());
    }
    EXPECT_EQ(texts, (std::vector<std::string>{" x", "y ", " "}));
    EXPECT_EQ(reader.next(), PullReader::Event::finished);
}

TEST(PullReader, TellsNamesOfOtherNamespacesApart) {
    const auto places =
        placesOf(opening + "<p:UNIT xmlns:p=\"other\"/><UNIT xmlns=\"\"/><UNIT/></AUTOSAR>");
    ASSERT_EQ(places.size(), 4U);
    EXPECT_EQ(places[1].first, "{other}UNIT");
    EXPECT_EQ(places[2].first, "{}UNIT");
    EXPECT_EQ(places[3].first, "UNIT");
}

} // namespace

} // namespace velum::arxml
