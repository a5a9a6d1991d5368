#include "arxml/path_tree.h"

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
    const Node& node = nodes_.emplace_back(Node{parent, std::string(name)});
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
    for (; !upwards.empty(); upwards.pop_back()) {
        text += '/';
        text += name(upwards.back());
    }
    return text.empty() ? "/" : text;
}

} // namespace velum::arxml
