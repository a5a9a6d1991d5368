// Pages about models that no AUTOSAR file could have made: random objects of all classes with
// random values, saved and loaded again.

#include "diff/comparison.h"
#include "diff/printers.h"
#include "html/diff_report.h"
#include "html/report.h"
#include "qob_store/store.h"
#include "support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace velum::html {

namespace {

/// Adds what it reads to a page, and then says what is wrong with it as far as one can tell without
/// a browser.
class ReadPage {
public:
    Sink sink() {
        return [this](std::string_view piece) {
            page_ += piece;
            return true;
        };
    }

    void expectSound() {
        for (std::size_t at = 0; (at = page_.find('<', at)) != std::string::npos;) {
            at = readTag(at);
            ASSERT_NE(at, std::string::npos) << "a tag without an end";
        }
        for (auto const& [name, count] : open_) {
            EXPECT_EQ(count, 0) << name;
        }
        for (std::string const& link : links_) {
            EXPECT_TRUE(ids_.contains(link)) << link;
        }
        EXPECT_EQ(page_.find("\xE2\x80\xAE"), std::string::npos);
        EXPECT_TRUE(std::none_of(page_.begin(), page_.end(), [](char c) {
            return static_cast<unsigned char>(c) < 0x20 && c != '\n';
        }));
    }

    std::set<std::string> const& ids() const { return ids_; }

private:
    /// Reads the tag at a place; returns where the text goes on behind it.
    std::size_t readTag(std::size_t at) {
        const bool isEnd = page_[at + 1] == '/';
        const std::size_t begin = at + (isEnd ? 2 : 1);
        std::size_t place = std::min(page_.find_first_of(" >", begin), page_.size());
        const std::string name = page_.substr(begin, place - begin);
        static const std::set<std::string> known = {
            "!DOCTYPE", "html",   "head",    "meta",    "title",  "style",   "body",  "header",
            "div",      "button", "nav",     "search",  "label",  "input",   "p",     "main",
            "section",  "script", "h1",      "h2",      "h3",     "h4",      "h5",    "a",
            "ul",       "li",     "details", "summary", "table",  "caption", "thead", "tbody",
            "tr",       "th",     "td",      "form",    "select", "option",  "span",  "b",
            "i",        "small",  "dl",      "dt",      "dd",     "figure",  "del",   "ins",
            "svg",      "path",   "rect",    "circle",  "text",   "g",       "br"};
        EXPECT_TRUE(known.contains(name)) << name;
        static const std::set<std::string> closed = {
            "section", "ul", "details", "table", "div", "a", "svg", "text", "dl", "figure", "b"};
        if (closed.contains(name)) {
            open_[name] += isEnd ? -1 : 1;
        }
        while (place < page_.size() && page_[place] != '>') {
            place = readAttribute(name, place);
        }
        const bool isRaw = !isEnd && (name == "script" || name == "style");
        return isRaw ? page_.find("</" + name, place) : place;
    }

    /// Reads the blank or the attribute at a place; returns where the tag goes on.
    std::size_t readAttribute(std::string const& tag, std::size_t at) {
        const std::size_t end = std::min(page_.find_first_of("= >\n", at), page_.size());
        const std::string name = page_.substr(at, end - at);
        if (end == page_.size() || page_[end] != '=') {
            return std::max(end, at + 1);
        }
        const bool isQuoted = page_[end + 1] == '"';
        const std::size_t begin = end + (isQuoted ? 2 : 1);
        const std::size_t close =
            std::min(page_.find_first_of(isQuoted ? "\"" : " >", begin), page_.size());
        checkAttribute(tag, name, page_.substr(begin, close - begin));
        return close + (isQuoted ? 1 : 0);
    }

    void checkAttribute(std::string const& tag, std::string const& name, std::string const& value) {
        static const std::set<std::string> numbers = {
            "d", "x", "y", "cx", "cy", "r", "width", "height", "viewBox", "data-x", "data-y"};
        EXPECT_NE(name.substr(0, 2), "on") << tag;
        EXPECT_EQ(value.find('<'), std::string::npos) << value;
        if (name == "id") {
            EXPECT_TRUE(ids_.insert(value).second) << value;
        } else if (name == "href") {
            EXPECT_EQ(value.substr(0, 1), "#");
            links_.insert(value.substr(1));
        } else if (numbers.contains(name)) {
            EXPECT_EQ(value.find_first_of("nN"), std::string::npos) << value; // nan, inf
        }
    }

    std::string page_;
    std::map<std::string, int> open_;
    std::set<std::string> ids_;
    std::set<std::string> links_;
};

std::size_t countOfSections(std::set<std::string> const& ids) {
    return static_cast<std::size_t>(std::count_if(
        ids.begin(), ids.end(), [](std::string const& id) { return id.size() == 7; }));
}

/// Objects that contain each other have an end there too.
void expectJson(QOB::Model const& before, QOB::Model const& after) {
    model::Addresses left;
    model::Addresses right;
    const diff::Sides sides{left, right};
    const std::string json = diff::printJson(diff::compareModels(before, after, sides, {}), sides);
    EXPECT_NE(json.find("\"summary\""), std::string::npos);
}

TEST(Page, of_whatever_a_store_holds_is_sound) {
    StoreTest::Folder const folder;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        StoreTest::RandomModel random(seed);
        random.create(60);
        random.write(900);
        QOB::Store::save(random.model(), folder.file("old"));
        random.write(60);
        QOB::Store::save(random.model(), folder.file("new"));
        const QOB::Model before = QOB::Store::load(folder.file("old"));
        const QOB::Model after = QOB::Store::load(folder.file("new"));

        ReadPage page;
        EXPECT_TRUE(writeReport(before, {}, findingsOf(before, {}, {}), "<b>", page.sink()));
        page.expectSound();
        EXPECT_GT(countOfSections(page.ids()), 10U);

        ReadPage changes;
        EXPECT_TRUE(writeDiffReport({before, {}, "<"}, {after, {}, ">"}, changes.sink()));
        changes.expectSound();
        expectJson(before, after);
    }
}

} // namespace

} // namespace velum::html
