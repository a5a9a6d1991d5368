#include "planning/axis_order.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

std::vector<Element> inAxisOrder(ImportContext const& context, Element set, NameId name) {
    std::vector<std::pair<std::int32_t, Element>> axes;
    std::map<std::int32_t, Element> byIndex;
    for (const Element axis : set.children()) {
        if (!axis.is(name)) {
            continue;
        }
        std::int32_t place = std::numeric_limits<std::int32_t>::max();
        if (const Element index = axis.child(element::swAxisIndex)) {
            const WholeNumber number = readWholeNumber(index.text());
            if (number.value) {
                place = *number.value;
                context.account.consume(index);
                const auto [first, isNew] = byIndex.emplace(place, axis);
                if (!isNew) {
                    context.find(index,
                                 Reason::contradiction,
                                 "Another axis has the index " + bracketed(index.text()) +
                                     " too, at " + context.whereabouts(first->second) +
                                     "; the two stand in the order of the file.");
                }
            } else {
                context.refuse(index,
                               *number.fault,
                               "The axis index " + bracketed(index.text()) +
                                   " is no whole number.");
            }
        }
        axes.emplace_back(place, axis);
    }
    std::stable_sort(
        axes.begin(), axes.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
    std::vector<Element> ordered;
    ordered.reserve(axes.size());
    for (auto const& [place, axis] : axes) {
        ordered.push_back(axis);
    }
    return ordered;
}

} // namespace velum::arxml
