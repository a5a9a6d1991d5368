#pragma once

#include "updating/source_text.h"
#include "writing/element_order.h"

#include <string>
#include <string_view>

namespace velum::arxml::scratch {

/// The first child of a document that doesn't stand where the table of the order has it; empty if
/// all do.
inline std::string misplacedIn(SourceNode const& node) {
    int last = -1;
    const bool isOrdered =
        !node.children.empty() && placeInElement(node.name, node.children.front().name) >= 0;
    for (SourceNode const& child : node.children) {
        const int place = placeInElement(node.name, child.name);
        if (isOrdered && place < last) {
            return std::string(child.name) + " in " + std::string(node.name);
        }
        last = place;
        if (std::string inside = misplacedIn(child); !inside.empty()) {
            return inside;
        }
    }
    return {};
}

inline std::string misplacedIn(std::string_view document) {
    return misplacedIn(SourceText(document).nodeAt(document.find("<AUTOSAR")));
}

} // namespace velum::arxml::scratch
