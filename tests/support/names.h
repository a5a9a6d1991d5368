#pragma once

#include <string>

namespace VelumTest {

/// The names of live elements, with a space between two.
template <class Elements>
std::string namesOf(Elements const& elements) {
    std::string names;
    for (auto const& element : elements) {
        names += names.empty() ? "" : " ";
        names += element.getName().view();
    }
    return names;
}

} // namespace VelumTest
