#include "source/path_tree.h"

#include <vector>

namespace velum::arxml {

PathTree::PathTree() {
    nodes_.push_back({root, ""});
}

PathId PathTree::enter(PathId parent, std::string_view name) {
    if (const auto found = children_.find({parent, name}); found != children_.end()) {
        return found->second;
    }
    const auto path = static_cast<PathId>(nodes_.size());
    const std::size_t size = nodes_[parent].size + 1 + name.size();
    Node const& node = nodes_.emplace_back(Node{parent, std::string(name), size});
    children_.emplace(Key{parent, node.name}, path);
    return path;
}

std::optional<PathId> PathTree::find(PathId from, std::string_view names) const {
    PathId path = from;
    for (;;) {
        const std::size_t end = names.find('/');
        const auto found = children_.find({path, names.substr(0, end)});
        if (found == children_.end()) {
            return std::nullopt;
        }
        path = found->second;
        if (end == std::string_view::npos) {
            return path;
        }
        names.remove_prefix(end + 1);
    }
}

std::string PathTree::text(PathId path) const {
    std::vector<PathId> upwards;
    for (; path != root; path = parent(path)) {
        upwards.push_back(path);
    }
    std::string text;
    for (; !upwards.empty() && text.size() <= longestPath; upwards.pop_back()) {
        text += '/';
        text += name(upwards.back()).substr(0, longestPath);
    }
    if (text.size() > longestPath) {
        std::size_t end = longestPath;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            --end; // not within a character
        }
        text.resize(end);
        text += "...";
    }
    return text.empty() ? "/" : text;
}

} // namespace velum::arxml
