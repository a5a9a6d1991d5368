#include "writing/element_order.h"

#include <algorithm>
#include <unordered_map>

namespace velum::arxml {

namespace {

/// The names of the children, parted by blanks.
struct OrderOfChildren {
    std::string_view element;
    std::string_view children;
};

constexpr OrderOfChildren elementOrder[] = {
#include "writing/element_order.inc"
};

using Places = std::unordered_map<std::string_view, int>;

std::unordered_map<std::string_view, Places> placesByElement() {
    std::unordered_map<std::string_view, Places> all;
    for (OrderOfChildren const& row : elementOrder) {
        Places& places = all[row.element];
        std::string_view rest = row.children;
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find(' '), rest.size());
            places.emplace(rest.substr(0, end), static_cast<int>(places.size()));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    return all;
}

} // namespace

int placeInElement(std::string_view element, std::string_view child) {
    static const std::unordered_map<std::string_view, Places> all = placesByElement();
    const auto places = all.find(element);
    if (places == all.end()) {
        return -1;
    }
    const auto place = places->second.find(child);
    return place == places->second.end() ? -1 : place->second;
}

} // namespace velum::arxml
