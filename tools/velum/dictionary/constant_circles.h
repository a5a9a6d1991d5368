#pragma once

#include "dictionary/import_context.h"

#include <unordered_map>
#include <vector>

namespace velum::dictionary {

/// Finds constants that refer to themselves, directly or by way of others.
class ConstantCircles {
public:
    explicit ConstantCircles(ImportContext const& context) : context_(context) {}

    /// The reference stands in the constant `owner` and leads to the constant `target`.
    void add(arxml::Element owner, arxml::Element target, arxml::Element reference);

    /// Reports each reference that is part of a circle.
    void report();

private:
    struct Edge {
        arxml::Element target;
        arxml::Element reference;
    };
    struct Node {
        arxml::Element constant;
        std::vector<Edge> edges;
        unsigned number = 0; // in the order of the search; 0 until it is met
        unsigned lowest = 0; // number of the first one that can be reached from it and reaches it
        bool isOpen = false; // on the way of the search, or reaches what is
        unsigned group = 0;  // those of one group reach each other
    };

    Node& nodeOf(arxml::Element constant) { return nodes_[constant.index()]; }
    void search(Node& start);
    void close(Node& node);

    ImportContext context_;
    std::vector<arxml::Element> owners_; // in the order of the files
    std::unordered_map<arxml::ElementStore::Index, Node> nodes_;
    std::vector<Node*> open_;
    unsigned lastNumber_ = 0;
    unsigned lastGroup_ = 0;
};

} // namespace velum::dictionary
