#include "planning/display_name.h"

#include <velum_arxml/notation/scripts.h>

namespace velum::arxml {

std::string displayNameOf(Element displayName) {
    const std::string_view written = displayName.text();
    std::string name;
    std::size_t begin = 0;
    for (const Element part : displayName.children()) {
        const bool isRaised = part.is(element::sup);
        if (!isRaised && !part.is(element::sub)) {
            continue;
        }
        const std::size_t end = part.placeInText();
        name += written.substr(begin, end - begin);
        name += isRaised ? superscript(part.text()) : subscript(part.text());
        begin = end;
    }
    name += written.substr(begin);
    return name;
}

} // namespace velum::arxml
