#include "scratch.h"
#include "updating/document_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace velum::arxml {

namespace {

/// Changes in random places of a text, and the text after them, put together piece by piece.
struct RandomEdits {
    explicit RandomEdits(unsigned seed) : random(seed) {
        while (text.size() < 200) {
            keep(anyOf(30));
            const std::size_t begin = text.size();
            const std::string old = letters(anyOf(12));
            const std::string now = letters(anyOf(12));
            text += old;
            after += now;
            edits.push_back({begin, begin + old.size(), now});
        }
        keep(anyOf(30));
        std::shuffle(edits.begin(), edits.end(), random);
    }

    std::size_t anyOf(std::size_t count) { return random() % count; }
    std::string letters(std::size_t count) {
        std::string some;
        while (some.size() < count) {
            some += static_cast<char>('a' + anyOf(26));
        }
        return some;
    }
    void keep(std::size_t count) {
        const std::string some = letters(count + 1); // those at one place would lose their order
        text += some;
        after += some;
    }

    std::mt19937 random;
    std::string text;
    std::string after;
    std::vector<TextEdit> edits;
};

} // namespace

TEST(SourceText, IsChangedPieceByPieceAndInPlace) {
    const scratch::Folder folder;
    const std::string file = folder / "text";
    for (unsigned seed = 0; seed < 500; ++seed) {
        RandomEdits const sample(seed);
        ASSERT_EQ(applied(sample.text, sample.edits), sample.after) << "seed " << seed;
        std::ofstream(file) << sample.text;
        DocumentText text(file);
        text.apply(sample.edits);
        ASSERT_EQ(text.view(), sample.after) << "seed " << seed;
    }
    EXPECT_EQ(applied("ab", {{1, 1, "1"}, {1, 1, "2"}, {2, 2, "3"}}), "a12b3");
}

TEST(SourceText, StaysAsItIsIfTwoChangesTouch) {
    const scratch::Folder folder;
    std::ofstream(folder / "text") << "abcdef";
    DocumentText text(folder / "text");
    EXPECT_THROW(text.apply({{0, 1, "long"}, {2, 5, ""}, {4, 6, "x"}}), std::logic_error);
    EXPECT_EQ(text.view(), "abcdef");
    text.apply({{0, 1, std::string(5'000'000, 'x')}}); // more than is free behind it
    EXPECT_EQ(text.view().size(), 5'000'005U);
    EXPECT_TRUE(text.view().ends_with("xbcdef"));
}

} // namespace velum::arxml
