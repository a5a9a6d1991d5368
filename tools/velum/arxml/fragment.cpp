#include "arxml/fragment.h"

namespace velum::arxml {

std::string_view Fragment::text(Index element) const {
    return view(nodes_[element].text);
}

std::optional<std::string_view> Fragment::attribute(Index element, std::string_view name) const {
    for (std::size_t i = nodes_[element].firstAttribute;
         i < attributes_.size() && attributes_[i].owner == element;
         ++i) {
        if (view(attributes_[i].name) == name) {
            return view(attributes_[i].value);
        }
    }
    return std::nullopt;
}

Fragment::Index Fragment::child(Index element, NameId name) const {
    if (element == none) {
        return none;
    }
    Index child = firstChild(element);
    while (child != none && nodes_[child].name != name) {
        child = nextSibling(child);
    }
    return child;
}

void Fragment::begin(FileId file, PathId package) {
    file_ = file;
    package_ = package;
    nodes_.clear();
    attributes_.clear();
    texts_.clear();
}

bool Fragment::add(Index parent, NameId name, Position position, PathId path) {
    if (nodes_.size() >= mostElements) {
        return false;
    }
    const auto index = static_cast<Index>(nodes_.size());
    Node node{};
    node.name = name;
    node.parent = parent;
    node.position = position;
    node.path = path;
    node.firstAttribute = static_cast<std::uint32_t>(attributes_.size());
    nodes_.push_back(node);
    if (parent != none) {
        Node& above = nodes_[parent];
        if (above.lastChild == none) {
            above.firstChild = index;
        } else {
            nodes_[above.lastChild].nextSibling = index;
        }
        above.lastChild = index;
    }
    return true;
}

bool Fragment::setText(Index element, std::string_view text) {
    if (!fits(text.size())) {
        return false;
    }
    nodes_[element].text = keep(text);
    return true;
}

bool Fragment::addAttribute(std::string_view name, std::string_view value) {
    if (!fits(name.size() + value.size())) {
        return false;
    }
    const Span keptName = keep(name);
    attributes_.push_back({static_cast<Index>(nodes_.size() - 1), keptName, keep(value)});
    return true;
}

Fragment::Span Fragment::keep(std::string_view text) {
    const Span span{static_cast<std::uint32_t>(texts_.size()),
                    static_cast<std::uint32_t>(text.size())};
    texts_ += text;
    return span;
}

} // namespace velum::arxml
