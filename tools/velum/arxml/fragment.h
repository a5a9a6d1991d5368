#pragma once

#include "arxml/names.h"
#include "arxml/path_tree.h"
#include "arxml/position.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velum::arxml {

/// One element with all that it holds, in the order of the file.
///
/// Filled by the document reader for each element that somebody wants whole, then used again for
/// the next one: what it hands out is valid until then. Nothing in it recurses.
class Fragment {
public:
    /// Counts the elements in the order of their start tags; 0 is the outermost.
    using Index = std::uint32_t;
    static constexpr Index none = 0xFFFFFFFF;

    /// The most elements and bytes of text that one fragment may have.
    static constexpr Index mostElements = 1'000'000;
    static constexpr std::size_t mostText = 100'000'000;

    std::size_t size() const { return nodes_.size(); }
    NameId name(Index element) const { return nodes_[element].name; }
    Position position(Index element) const { return nodes_[element].position; }

    /// The path of the element, or of the nearest one around it that has a name.
    PathId path(Index element) const { return nodes_[element].path; }

    /// The text directly in the element, without white space at both ends.
    std::string_view text(Index element) const;
    std::optional<std::string_view> attribute(Index element, std::string_view name) const;

    Index parent(Index element) const { return nodes_[element].parent; }
    Index firstChild(Index element) const { return nodes_[element].firstChild; }
    Index nextSibling(Index element) const { return nodes_[element].nextSibling; }

    /// The first child of that name, or `none`; `none` has no children.
    Index child(Index element, NameId name) const;

    /// The package that holds the fragment and the file it comes from.
    PathId package() const { return package_; }
    FileId file() const { return file_; }

    /// Starts anew.
    void begin(FileId file, PathId package);
    /// Adds an element below `parent`; false if it is one too many.
    bool add(Index parent, NameId name, Position position, PathId path);
    /// Both return false if the text is too much.
    bool setText(Index element, std::string_view text);
    bool addAttribute(std::string_view name, std::string_view value); ///< To the newest element.
    void setPath(Index element, PathId path) { nodes_[element].path = path; }

private:
    struct Span {
        std::uint32_t begin = 0;
        std::uint32_t size = 0;
    };
    struct Attribute {
        Index owner;
        Span name;
        Span value;
    };
    struct Node {
        NameId name;
        Index parent;
        Index firstChild = none;
        Index lastChild = none;
        Index nextSibling = none;
        Position position;
        PathId path;
        Span text;
        std::uint32_t firstAttribute;
    };

    Span keep(std::string_view text);
    bool fits(std::size_t size) const { return size <= mostText - texts_.size(); }
    std::string_view view(Span span) const {
        return std::string_view(texts_).substr(span.begin, span.size);
    }

    FileId file_ = 0;
    PathId package_ = PathTree::root;
    std::vector<Node> nodes_;
    std::vector<Attribute> attributes_;
    std::string texts_;
};

} // namespace velum::arxml
