#include "reading/element_store.h"

#include <algorithm>

namespace velum::arxml {

Element ElementStore::at(Index index) const {
    return {*this, index};
}

ElementStore::Tree const& ElementStore::treeOf(Index element) const {
    const auto behind =
        std::upper_bound(trees_.begin(), trees_.end(), element, [](Index index, Tree const& tree) {
            return index < tree.first;
        });
    return *(behind - 1);
}

void ElementStore::begin(FileId file, PathId package) {
    trees_.push_back({size(), file, package});
    textOfTree_ = 0;
}

ElementStore::Index ElementStore::add(Index parent, NameId name, Position position, PathId path) {
    const Index index = size();
    if (index - trees_.back().first >= mostElements || index + 1 == none) {
        return none;
    }
    Node node{};
    node.name = name;
    node.parent = parent;
    node.end = none;
    node.path = path;
    node.position = position;
    node.firstAttribute = static_cast<std::uint32_t>(attributes_.size());
    nodes_.push_back(node);
    return index;
}

bool ElementStore::fits(std::size_t size) {
    textOfTree_ += size;
    return textOfTree_ <= mostText;
}

bool ElementStore::setText(Index element, std::string_view text) {
    if (!fits(text.size())) {
        return false;
    }
    nodes_[element].text = texts_.keep(text);
    return true;
}

bool ElementStore::addAttribute(std::string_view name, std::string_view value) {
    if (!fits(name.size() + value.size())) {
        return false;
    }
    attributes_.push_back({size() - 1, texts_.keep(name), texts_.keep(value)});
    return true;
}

void ElementStore::setPlaceInText(Index element, std::size_t bytes) {
    if (bytes > 0) {
        placesInText_.emplace(element, bytes);
    }
}

std::size_t Element::placeInText() const {
    const auto found = store_->placesInText_.find(index_);
    const std::size_t bytes = found == store_->placesInText_.end() ? 0 : found->second;
    return std::min(bytes, parent().text().size());
}

std::optional<std::string_view> Element::attribute(std::string_view name) const {
    if (store_ == nullptr) {
        return std::nullopt;
    }
    auto const& attributes = store_->attributes_;
    for (std::size_t i = node().firstAttribute;
         i < attributes.size() && attributes[i].owner == index_;
         ++i) {
        if (attributes[i].name == name) {
            return attributes[i].value;
        }
    }
    return std::nullopt;
}

Element Element::parent() const {
    if (store_ == nullptr || node().parent == ElementStore::none) {
        return {};
    }
    return {*store_, node().parent};
}

Element Element::child(NameId name) const {
    for (const Element child : children()) {
        if (child.is(name)) {
            return child;
        }
    }
    return {};
}

Element::Children Element::children() const {
    if (store_ == nullptr) {
        return {nullptr, ElementStore::none, ElementStore::none};
    }
    return {store_, index_ + 1, node().end};
}

bool haveEqualContent(ElementStore const& store, Element a, Element b) {
    const ElementStore::Index size = a.end() - a.index();
    if (size != b.end() - b.index()) {
        return false;
    }
    for (ElementStore::Index i = 0; i < size; ++i) {
        const Element left = store.at(a.index() + i);
        const Element right = store.at(b.index() + i);
        if (left.name() != right.name() || left.text() != right.text() ||
            left.end() - a.index() != right.end() - b.index()) {
            return false;
        }
        for (const std::string_view name : {"DEST", "BASE", "INTERVAL-TYPE"}) {
            if (left.attribute(name) != right.attribute(name)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace velum::arxml
