#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace velum::arxml {

/// A change of a text: the bytes from `begin` to `end` give way to others.
struct TextEdit {
    std::size_t begin;
    std::size_t end;
    std::string text;
};

/// Makes all changes. None may touch another one; those that insert at one place keep their order.
/// Raises std::logic_error if two touch.
std::string applied(std::string_view text, std::vector<TextEdit> edits);

/// What stays of a text, and where it goes.
struct TextPiece {
    std::size_t from;
    std::size_t to;
    std::size_t size;
};

/// Puts the changes of a text of this size in order; returns what is before, between and behind
/// them. Raises as `applied` does.
std::vector<TextPiece> piecesBetween(std::vector<TextEdit>& edits, std::size_t size);

/// A text with the characters escaped that XML needs.
std::string escaped(std::string_view text);

/// An element of a document with its places in the text.
struct SourceNode {
    std::string_view name;
    std::size_t begin = 0;      ///< of the start tag
    std::size_t content = 0;    ///< behind the start tag
    std::size_t contentEnd = 0; ///< of the content
    std::size_t end = 0;        ///< behind the end tag
    std::string text;           ///< directly in it, without white space at both ends
    std::vector<SourceNode> children;

    SourceNode const* child(std::string_view tag) const;
    std::string_view childText(std::string_view tag) const;
    bool isEmptyTag() const { return contentEnd == end; }
};

/// A reference in a document, as written.
struct SourceRef {
    std::string_view text;
    std::size_t begin = 0;
    std::string_view base;    ///< BASE, empty without
    std::string_view package; ///< the path of the element around it
};

/// A reference base in a document.
struct SourceBase {
    std::string label;
    std::string target;     ///< The path of its package, as written.
    std::string targetBase; ///< BASE of that.
    bool isDefault = false;
    bool isThisPackage = false;
};

/// Walks through a well-formed document in UTF-8, once, and keeps nothing of it.
class SourceText {
public:
    /// `around`: the path of what the text is a part of.
    explicit SourceText(std::string_view text, std::string_view around = {})
        : text_(text), around_(around) {}

    /// Calls back for the path of each named element, with its name's place; for each reference and
    /// each reference base; and for what can be taken out of a document as a whole.
    struct Visitor {
        std::function<void(std::string const& path,
                           std::size_t begin,
                           std::size_t nameBegin,
                           std::size_t nameEnd)>
            onNamed;
        std::function<void(SourceRef const&)> onReference;
        std::function<void(std::string const& package, SourceBase const& base)> onBase;
        /// An element of a package, or a map of a set of maps; its references come before it.
        std::function<void(std::string_view name,
                           std::string const& path,
                           std::size_t begin,
                           std::size_t end)>
            onCell;
        bool isDone = false; ///< A callback may end the walk.
    };
    void visit(Visitor const& visitor) const;

    /// Where the elements with these paths begin, the first one of each if it is in parts. Those
    /// that aren't there are left out.
    std::unordered_map<std::string, std::size_t>
    placesOf(std::unordered_set<std::string> const& paths) const;
    /// The element that begins at a place.
    SourceNode nodeAt(std::size_t begin) const;

private:
    std::string_view text_;
    std::string_view around_;
};

} // namespace velum::arxml
