#include "updating/source_text.h"

#include "source/white_space.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace velum::arxml {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// The text that the five named entities and character data stand for.
std::string unescaped(std::string_view text) {
    static constexpr std::pair<std::string_view, char> entities[] = {
        {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
    std::string plain;
    while (!text.empty()) {
        bool isEntity = false;
        for (auto const& [entity, c] : entities) {
            if (text.substr(0, entity.size()) == entity) {
                plain += c;
                text.remove_prefix(entity.size());
                isEntity = true;
                break;
            }
        }
        if (!isEntity) {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    return plain;
}

/// One piece of markup; only what starts an element has a name.
struct Tag {
    enum class Kind { start, end, empty, other, text };
    Kind kind = Kind::other;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string_view name;
};

/// Takes markup off a document, one piece after the other.
class Tags {
public:
    Tags(std::string_view text, std::size_t at) : text_(text), at_(at) {}

    /// False at the end of the document.
    bool next(Tag& tag) {
        const std::size_t begin = text_.find('<', at_);
        if (begin == std::string_view::npos) {
            return false;
        }
        tag = {Tag::Kind::other, begin, 0, {}};
        const char second = begin + 1 < text_.size() ? text_[begin + 1] : '\0';
        if (second == '!' && text_.compare(begin, 4, "<!--") == 0) {
            tag.end = behind("-->", begin + 4);
        } else if (second == '!' && text_.compare(begin, 9, "<![CDATA[") == 0) {
            tag.kind = Tag::Kind::text;
            tag.end = behind("]]>", begin + 9);
        } else if (second == '?') {
            tag.end = behind("?>", begin + 2);
        } else {
            readTag(tag);
        }
        at_ = tag.end;
        return true;
    }

private:
    std::size_t behind(std::string_view mark, std::size_t from) const {
        const std::size_t place = text_.find(mark, from);
        if (place == std::string_view::npos) {
            throw std::runtime_error("The document ends within its markup.");
        }
        return place + mark.size();
    }

    static bool endsName(char c) {
        return c == '>' || c == ' ' || c == '/' || c == '\n' || c == '\t' || c == '\r';
    }

    void readTag(Tag& tag) const {
        std::size_t at = tag.begin + 1;
        if (at < text_.size() && text_[at] == '/') { // its name is that of the start tag
            tag.kind = Tag::Kind::end;
            tag.end = behind(">", at);
            return;
        }
        while (at < text_.size() && !endsName(text_[at])) {
            ++at;
        }
        tag.name = std::string_view(text_.data() + tag.begin + 1, at - tag.begin - 1);
        while (at < text_.size() && text_[at] != '>') { // a value may have '>' in it
            const char c = text_[at];
            at = c == '"' || c == '\'' ? text_.find(c, at + 1) : at;
            at = at == std::string_view::npos ? text_.size() : at + 1;
        }
        if (at >= text_.size()) {
            throw std::runtime_error("The document ends within its markup.");
        }
        tag.end = at + 1;
        tag.kind = text_[at - 1] == '/' ? Tag::Kind::empty : Tag::Kind::start;
    }

    std::string_view text_;
    std::size_t at_;
};

bool isReference(std::string_view name) {
    return name.ends_with("REF") && ((name.size() > 4 && name.ends_with("-REF")) ||
                                     (name.size() > 5 && name.ends_with("-TREF")) ||
                                     (name.size() > 5 && name.ends_with("-IREF")));
}

std::string_view attributeIn(std::string_view tag, std::string_view name) {
    for (std::size_t at = tag.find(name); at != std::string_view::npos;
         at = tag.find(name, at + 1)) {
        const std::size_t behind = tag.find_first_not_of(blanks, at + name.size());
        if (!isWhiteSpace(tag[at - 1]) || behind == std::string_view::npos || tag[behind] != '=') {
            continue;
        }
        const std::size_t quote = tag.find_first_of("\"'", behind);
        const std::size_t end = tag.find(tag[quote], quote + 1);
        return tag.substr(quote + 1, end - quote - 1);
    }
    return {};
}

/// Follows the names and references of a document.
class Walk {
public:
    Walk(std::string_view text, std::string_view around, SourceText::Visitor const& visitor)
        : text_(text), visitor_(visitor), path_(around) {}

    void run() {
        Tags tags(text_, 0);
        Tag tag;
        while (!visitor_.isDone && tags.next(tag)) {
            if (tag.kind == Tag::Kind::start) {
                open_.push_back({tag.name, tag.begin, tag.end, path_.size()});
                if (tag.name == "REFERENCE-BASE") {
                    base_ = SourceBase();
                    isInBase_ = true;
                }
            } else if (tag.kind == Tag::Kind::end && !open_.empty()) {
                close(tag);
            }
        }
    }

private:
    struct Open {
        std::string_view name;
        std::size_t begin;
        std::size_t content;
        std::size_t pathSize; ///< of the path around it
    };
    void close(Tag const& tag) {
        const Open open = open_.back();
        open_.pop_back();
        const std::string_view content = text_.substr(open.content, tag.begin - open.content);
        if (open.name == "SHORT-NAME" && !open_.empty()) {
            const std::string_view name = withoutOuterSpace(content);
            path_.resize(open_.back().pathSize);
            path_ += '/';
            path_ += name;
            if (visitor_.onNamed) {
                const auto begin = static_cast<std::size_t>(name.data() - text_.data());
                visitor_.onNamed(path_, open_.back().begin, begin, begin + name.size());
            }
            return;
        }
        const std::string_view start = text_.substr(open.begin, open.content - open.begin);
        if (visitor_.onBase && isInBase_) {
            closeInBase(open.name, withoutOuterSpace(content), start);
        }
        if (isReference(open.name) && visitor_.onReference &&
            content.find('<') == std::string_view::npos) {
            const std::string_view text = withoutOuterSpace(content);
            visitor_.onReference({text,
                                  static_cast<std::size_t>(text.data() - text_.data()),
                                  attributeIn(start, "BASE"),
                                  path_});
        }
        if (visitor_.onCell && isCell(open.name)) {
            visitor_.onCell(open.name, path_, open.begin, tag.end);
        }
        path_.resize(open.pathSize);
    }

    void closeInBase(std::string_view name, std::string_view text, std::string_view start) {
        if (name == "SHORT-LABEL") {
            base_.label = text;
        } else if (name == "IS-DEFAULT") {
            base_.isDefault = text == "true";
        } else if (name == "BASE-IS-THIS-PACKAGE") {
            base_.isThisPackage = text == "true";
        } else if (name == "PACKAGE-REF") {
            base_.target = text;
            base_.targetBase = attributeIn(start, "BASE");
        } else if (name == "REFERENCE-BASE") {
            visitor_.onBase(path_, base_);
            isInBase_ = false;
        }
    }

    /// Of an element that was just closed.
    bool isCell(std::string_view name) const {
        if (name == "DATA-TYPE-MAP") {
            return true;
        }
        return open_.size() > 1 && open_.back().name == "ELEMENTS" &&
               open_[open_.size() - 2].name == "AR-PACKAGE";
    }

    std::string_view text_;
    SourceText::Visitor const& visitor_;
    std::vector<Open> open_;
    std::string path_;
    SourceBase base_;
    bool isInBase_ = false;
};

} // namespace

std::string applied(std::string_view text, std::vector<TextEdit> edits) {
    const std::vector<TextPiece> pieces = piecesBetween(edits, text.size());
    std::string result(text.substr(0, pieces.front().size));
    for (std::size_t i = 0; i < edits.size(); ++i) {
        result += edits[i].text;
        result += text.substr(pieces[i + 1].from, pieces[i + 1].size);
    }
    return result;
}

std::vector<TextPiece> piecesBetween(std::vector<TextEdit>& edits, std::size_t size) {
    std::stable_sort(edits.begin(), edits.end(), [](TextEdit const& a, TextEdit const& b) {
        return a.begin < b.begin;
    });
    std::vector<TextPiece> pieces;
    TextPiece next{0, 0, 0};
    for (TextEdit const& edit : edits) {
        if (edit.begin < next.from) {
            throw std::logic_error("Two changes of the file touch each other.");
        }
        next.size = edit.begin - next.from;
        pieces.push_back(next);
        next = {edit.end, next.to + next.size + edit.text.size(), 0};
    }
    next.size = size - next.from;
    pieces.push_back(next);
    return pieces;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += c;
            break;
        }
    }
    return result;
}

SourceNode const* SourceNode::child(std::string_view tag) const {
    const auto found = std::find_if(
        children.begin(), children.end(), [&](SourceNode const& node) { return node.name == tag; });
    return found == children.end() ? nullptr : &*found;
}

std::string_view SourceNode::childText(std::string_view tag) const {
    SourceNode const* const node = child(tag);
    return node == nullptr ? std::string_view() : std::string_view(node->text);
}

void SourceText::visit(Visitor const& visitor) const {
    Walk(text_, around_, visitor).run();
}

std::unordered_map<std::string, std::size_t>
SourceText::placesOf(std::unordered_set<std::string> const& paths) const {
    std::unordered_map<std::string, std::size_t> places;
    Visitor visitor;
    visitor.isDone = paths.empty();
    visitor.onNamed = [&](std::string const& path, std::size_t begin, auto...) {
        if (paths.contains(path)) {
            places.try_emplace(path, begin);
            visitor.isDone = places.size() == paths.size();
        }
    };
    visit(visitor);
    return places;
}

SourceNode SourceText::nodeAt(std::size_t begin) const {
    std::vector<SourceNode> open;
    std::vector<std::size_t> textFrom;
    Tags tags(text_, begin);
    Tag tag;
    while (tags.next(tag)) {
        if (!open.empty()) {
            open.back().text +=
                unescaped(text_.substr(textFrom.back(), tag.begin - textFrom.back()));
            textFrom.back() = tag.end;
        }
        if (tag.kind == Tag::Kind::text && !open.empty()) {
            open.back().text += text_.substr(tag.begin + 9, tag.end - tag.begin - 12);
        }
        if (tag.kind == Tag::Kind::start || tag.kind == Tag::Kind::empty) {
            open.push_back({tag.name, tag.begin, tag.end, tag.end, tag.end, {}, {}});
            textFrom.push_back(tag.end);
        }
        if (tag.kind != Tag::Kind::end && tag.kind != Tag::Kind::empty) {
            continue;
        }
        SourceNode node = std::move(open.back());
        open.pop_back();
        textFrom.pop_back();
        node.contentEnd = tag.kind == Tag::Kind::end ? tag.begin : tag.end;
        node.end = tag.end;
        node.text = std::string(withoutOuterSpace(node.text));
        if (open.empty()) {
            return node;
        }
        textFrom.back() = tag.end;
        open.back().children.push_back(std::move(node));
    }
    throw std::runtime_error("The document ends within an element.");
}

} // namespace velum::arxml
