#include "planning/constant_circles.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace velum::arxml {

void ConstantCircles::add(Element owner, Element target, Element reference) {
    Node& node = nodeOf(owner);
    if (node.edges.empty()) {
        owners_.push_back(owner);
    }
    node.constant = owner;
    node.edges.push_back({target, reference});
}

/// Those that were met since the node and are still open reach it, and it reaches them.
void ConstantCircles::close(Node& node) {
    ++lastGroup_;
    for (Node* member = nullptr; member != &node;) {
        member = open_.back();
        open_.pop_back();
        member->isOpen = false;
        member->group = lastGroup_;
    }
}

/// Tarjan's search for strongly connected parts, without recursion: chains may be long.
void ConstantCircles::search(Node& start) {
    std::vector<std::pair<Node*, std::size_t>> way; // with the edge that is next
    const auto enter = [&](Node& node) {
        node.number = node.lowest = ++lastNumber_;
        node.isOpen = true;
        open_.push_back(&node);
        way.emplace_back(&node, 0);
    };
    enter(start);
    while (!way.empty()) {
        Node& node = *way.back().first;
        if (way.back().second < node.edges.size()) {
            const auto found = nodes_.find(node.edges[way.back().second++].target.index());
            if (found == nodes_.end()) {
                continue; // refers to no constant itself
            }
            if (found->second.number == 0) {
                enter(found->second);
            } else if (found->second.isOpen) {
                node.lowest = std::min(node.lowest, found->second.number);
            }
            continue;
        }
        way.pop_back();
        if (!way.empty()) {
            way.back().first->lowest = std::min(way.back().first->lowest, node.lowest);
        }
        if (node.lowest == node.number) {
            close(node);
        }
    }
}

void ConstantCircles::report() {
    for (Element const owner : owners_) {
        if (Node& node = nodeOf(owner); node.number == 0) {
            search(node);
        }
    }
    for (Element const owner : owners_) {
        Node const& node = nodeOf(owner);
        for (Edge const& edge : node.edges) {
            const auto target = nodes_.find(edge.target.index());
            if (target == nodes_.end() || target->second.group != node.group) {
                continue;
            }
            std::string text =
                "The constant " + bracketed(context_.path(owner)) + " refers to itself";
            if (!(edge.target == owner)) {
                text += " by way of " + bracketed(context_.path(edge.target));
            }
            context_.find(edge.reference, Reason::contradiction, text + "; it has no value.");
        }
    }
}

} // namespace velum::arxml
