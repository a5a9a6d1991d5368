#include "reading/document_index.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace velum::arxml {

namespace {

/// Packages /A and /A/B, and /A/B/T, /A/T and /C/T in them.
class References : public testing::Test {
protected:
    References() {
        PathTree& paths = index.paths();
        a = paths.enter(PathTree::root, "A");
        b = paths.enter(a, "B");
        paths.enter(b, "T");
        paths.enter(a, "T");
        paths.enter(paths.enter(PathTree::root, "C"), "T");
    }

    void addBase(PathId package,
                 std::string const& label,
                 bool isDefault,
                 std::string_view target,
                 std::optional<std::string_view> base = std::nullopt) {
        DocumentIndex::ReferenceBase added;
        added.label = label;
        added.isDefault = isDefault;
        added.isThisPackage = target.empty();
        added.package = {target, base, package};
        index.addBase(package, added);
    }

    std::string
    resolve(std::string_view target, std::optional<std::string_view> base, PathId package) const {
        const auto [path, hasBase] = index.resolve({target, base, package});
        if (!hasBase) {
            return "no base";
        }
        return path ? index.paths().text(*path) : "nothing";
    }

    DocumentIndex index;
    PathId a = PathTree::root;
    PathId b = PathTree::root;
};

TEST_F(References, LeadFromTheRootWhenAbsolute) {
    EXPECT_EQ(resolve("/A/B/T", std::nullopt, PathTree::root), "/A/B/T");
    EXPECT_EQ(resolve("/A/B", std::nullopt, b), "/A/B");
    EXPECT_EQ(resolve("/A/B/T/X", std::nullopt, b), "nothing");
    EXPECT_EQ(resolve("/A/", std::nullopt, b), "nothing");
    EXPECT_EQ(resolve("//T", std::nullopt, b), "nothing");
    EXPECT_EQ(resolve("/", std::nullopt, b), "nothing");
}

TEST_F(References, LeadFromTheNearestBaseOfTheirLabel) {
    addBase(a, "Types", false, "/C");
    EXPECT_EQ(resolve("T", "Types", b), "/C/T");
    EXPECT_EQ(resolve("X", "Types", b), "nothing");
    EXPECT_EQ(resolve("T", "types", b), "no base");
    EXPECT_EQ(resolve("T", "Types", PathTree::root), "no base");
    addBase(b, "Types", false, "");
    EXPECT_EQ(resolve("T", "Types", b), "/A/B/T");
    EXPECT_EQ(resolve("T", "Types", a), "/C/T");
}

TEST_F(References, LeadFromTheDefaultBaseWithoutALabel) {
    addBase(a, "Types", false, "/C");
    EXPECT_EQ(resolve("T", std::nullopt, b), "no base");
    addBase(a, "Here", true, "");
    EXPECT_EQ(resolve("T", std::nullopt, b), "/A/T");
    EXPECT_EQ(resolve("B/T", std::nullopt, b), "/A/B/T");
    EXPECT_EQ(resolve("", std::nullopt, b), "nothing");
}

TEST_F(References, GoThroughBasesThatAreRelativeThemselves) {
    addBase(a, "Here", true, "");
    addBase(b, "Inner", false, "B");
    addBase(b, "Named", false, "B", "Here");
    EXPECT_EQ(resolve("T", "Inner", b), "/A/B/T");
    EXPECT_EQ(resolve("T", "Named", b), "/A/B/T");
}

TEST_F(References, EndInACircleOfBases) {
    addBase(a, "Self", true, "B");
    addBase(a, "One", false, "B", "Two");
    addBase(a, "Two", false, "B", "One");
    EXPECT_EQ(resolve("T", std::nullopt, a), "no base");
    EXPECT_EQ(resolve("T", "One", b), "no base");
}

} // namespace

} // namespace velum::arxml
