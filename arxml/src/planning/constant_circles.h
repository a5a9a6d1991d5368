#pragma once

#include "planning/import_context.h"

#include <unordered_map>
#include <vector>

namespace velum::arxml {

/// Finds constants that refer to themselves, directly or by way of others.
class ConstantCircles {
public:
    explicit ConstantCircles(ImportContext const& context) : context_(context) {}

    /// The reference stands in the constant `owner` and leads to the constant `target`.
    void add(Element owner, Element target, Element reference);

    /// Reports each reference that is part of a circle.
    void report();

private:
    struct Edge {
        Element target;
        Element reference;
    };
    struct Node {
        Element constant;
        std::vector<Edge> edges;
        unsigned number = 0; // in the order of the search; 0 until it is met
        unsigned lowest = 0; // number of the first one that can be reached from it and reaches it
        bool isOpen = false; // on the way of the search, or reaches what is
        unsigned group = 0;  // those of one group reach each other
    };

    Node& nodeOf(Element constant) { return nodes_[constant.index()]; }
    void search(Node& start);
    void close(Node& node);

    ImportContext context_;
    std::vector<Element> owners_; // in the order of the files
    std::unordered_map<ElementStore::Index, Node> nodes_;
    std::vector<Node*> open_;
    unsigned lastNumber_ = 0;
    unsigned lastGroup_ = 0;
};

} // namespace velum::arxml
