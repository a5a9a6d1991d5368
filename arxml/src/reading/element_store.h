#pragma once

#include "reading/block_array.h"
#include "source/names.h"
#include "source/path_tree.h"
#include "source/text_arena.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <velum_arxml/source/position.h>

namespace velum::arxml {

class Element;

/// The elements of all files that an import wants whole, in the order of the files.
///
/// Filled by the document reader. An element is a few words beside its text; nothing here recurses.
class ElementStore {
public:
    /// Counts the elements in the order of their start tags.
    using Index = std::uint32_t;
    static constexpr Index none = 0xFFFFFFFF;

    /// The most elements and bytes of text that one tree may have.
    static constexpr Index mostElements = 2'000'000;
    static constexpr std::size_t mostText = 100'000'000;

    /// One outermost element: where it stands and where its package's relative references begin.
    struct Tree {
        Index first;
        FileId file;
        PathId package;
    };

    ElementStore() = default;
    ElementStore(ElementStore const&) = delete;
    ElementStore& operator=(ElementStore const&) = delete;

    Index size() const { return static_cast<Index>(nodes_.size()); }
    std::vector<Tree> const& trees() const { return trees_; }
    Element at(Index index) const;

    /// The tree that an element belongs to.
    Tree const& treeOf(Index element) const;

    /// Starts a tree; the next element added is its outermost one.
    void begin(FileId file, PathId package);
    /// Adds an element below `parent`; none if it is one too many.
    Index add(Index parent, NameId name, Position position, PathId path);
    /// Both return false if the text is too much for one tree. Names and values are kept.
    bool setText(Index element, std::string_view text);
    bool addAttribute(std::string_view name, std::string_view value); ///< To the newest element.
    void setPath(Index element, PathId path) { nodes_[element].path = path; }
    /// So many bytes of the parent's text, without the blanks at its start, stand before it. Only
    /// kept of elements that stand in the middle of a text.
    void setPlaceInText(Index element, std::size_t bytes);
    /// Closes an element: what is added from now on is not in it.
    void end(Index element) { nodes_[element].end = size(); }

private:
    friend class Element;

    struct Attribute {
        Index owner;
        std::string_view name;
        std::string_view value;
    };
    struct Node {
        NameId name;
        Index parent;
        Index end; // behind the last element in it
        PathId path;
        Position position;
        std::uint32_t firstAttribute;
        std::string_view text;
    };

    bool fits(std::size_t size);

    std::vector<Tree> trees_;
    BlockArray<Node> nodes_;
    std::vector<Attribute> attributes_;
    std::unordered_map<Index, std::size_t> placesInText_; // where it isn't 0
    TextArena texts_;
    std::size_t textOfTree_ = 0;
};

/// One element of a store; an empty one stands for an element that is not there and has nothing.
class Element {
public:
    Element() = default;
    Element(ElementStore const& store, ElementStore::Index index) : store_(&store), index_(index) {}

    explicit operator bool() const { return store_ != nullptr; }
    friend bool operator==(Element const& a, Element const& b) { return a.index_ == b.index_; }

    ElementStore::Index index() const { return index_; }
    NameId name() const { return node().name; }
    bool is(NameId name) const { return store_ != nullptr && node().name == name; }
    Position position() const { return node().position; }

    /// The path of the element, or of the nearest one around it that has a name.
    PathId path() const { return node().path; }
    FileId file() const { return store_->treeOf(index_).file; }
    PathId package() const { return store_->treeOf(index_).package; }

    /// The text directly in the element, without white space at both ends.
    std::string_view text() const { return store_ == nullptr ? std::string_view() : node().text; }
    std::optional<std::string_view> attribute(std::string_view name) const;
    /// How many bytes of the parent's text stand before the element.
    std::size_t placeInText() const;

    Element parent() const;
    /// The first child of that name.
    Element child(NameId name) const;
    /// Behind the last element in this one.
    ElementStore::Index end() const { return node().end; }

    class Children;
    /// All children in the order of the file.
    Children children() const;

private:
    ElementStore::Node const& node() const { return store_->nodes_[index_]; }

    ElementStore const* store_ = nullptr;
    ElementStore::Index index_ = ElementStore::none;
};

/// The children of an element, for range-for.
class Element::Children {
public:
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Element;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Element;

        Iterator() = default;
        Iterator(ElementStore const* store, ElementStore::Index index)
            : store_(store), index_(index) {}

        Element operator*() const { return {*store_, index_}; }
        Iterator& operator++() {
            index_ = Element(*store_, index_).end();
            return *this;
        }
        Iterator operator++(int) {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(Iterator const&, Iterator const&) = default;

    private:
        ElementStore const* store_ = nullptr;
        ElementStore::Index index_ = ElementStore::none;
    };

    Children(ElementStore const* store, ElementStore::Index first, ElementStore::Index end)
        : store_(store), first_(first), end_(end) {}

    Iterator begin() const { return {store_, first_}; }
    Iterator end() const { return {store_, end_}; }

private:
    ElementStore const* store_;
    ElementStore::Index first_;
    ElementStore::Index end_;
};

/// Whether two elements of one store say the same: names, texts and attributes, all the way down.
/// White space at the ends of texts and what only identifies a file's state (UUID) don't count.
bool haveEqualContent(ElementStore const& store, Element a, Element b);

} // namespace velum::arxml
