#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace velum::arxml {

/// Stands for a path of short names.
using PathId = std::uint32_t;

/// The paths of short names ("/A/B/C") of everything that was read, each name kept once.
class PathTree {
public:
    /// The path of what lies in no package, written "/".
    static constexpr PathId root = 0;

    /// The most bytes of a path by which anything is known: an object holds its path as a text, so
    /// longer ones would need much more memory than the file.
    static constexpr std::size_t longestPath = 4096;

    PathTree();
    PathTree(PathTree const&) = delete;
    PathTree& operator=(PathTree const&) = delete;

    /// The path of `name` below `parent`, entered if it is new.
    PathId enter(PathId parent, std::string_view name);

    /// The path that `names` ("B/C") leads to from `from`; none if nothing of that path was read.
    std::optional<PathId> find(PathId from, std::string_view names) const;

    /// Paths from this one on were not entered.
    PathId end() const { return static_cast<PathId>(nodes_.size()); }

    PathId parent(PathId path) const { return nodes_[path].parent; }
    std::string_view name(PathId path) const { return nodes_[path].name; }

    /// "/A/B/C"; of a path that is too long its beginning, with "..." behind.
    std::string text(PathId path) const;
    bool isTooLong(PathId path) const { return nodes_[path].size > longestPath; }

private:
    struct Node {
        PathId parent;
        std::string name;
        std::size_t size = 0; // of the path as a text
    };
    struct Key {
        PathId parent;
        std::string_view name; // points into the node

        friend bool operator==(Key const&, Key const&) = default;
    };
    struct HashKey {
        std::size_t operator()(Key const& key) const {
            return std::hash<std::string_view>()(key.name) ^
                   (std::size_t{key.parent} * 0x9E3779B97F4A7C15U);
        }
    };

    std::deque<Node> nodes_; // a deque, since the keys point into it
    boost::unordered_flat_map<Key, PathId, HashKey> children_;
};

} // namespace velum::arxml
