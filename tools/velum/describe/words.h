#pragma once

#include "describe/metamodel.h"

#include <string>
#include <string_view>
#include <vector>

namespace velum::describe {

/// "0..1", "1..*".
std::string multiplicity(Property const& property);

/// What a property is beside its type: "composite", "derived", "read-only", "ordered",
/// "non-unique", "private".
std::vector<std::string> traits(Property const& property);

/// The name of a type as it is written within a package: types of others stand behind the last
/// name of theirs, "foundation.Element".
std::string nameIn(Package const& here, Type const& type);

/// The same for a property with its class in front.
std::string nameIn(Package const& here, Property const& property);

/// The last name of a package.
std::string_view shortName(Package const& package);

/// "class", "abstract class", "data type", "enumeration".
std::string_view kindOf(Type const& type);

/// "qob_metaclass", or "name = value".
std::string textOf(Tag const& tag);

/// "35 classes with 109 properties, 6 data types".
std::string sumOf(Package const& package);

/// What `textOf` makes of each element, with ", " between two.
template <class Elements, class TextOf>
std::string listOf(Elements const& elements, TextOf textOf) {
    std::string list;
    for (auto const& element : elements) {
        list += list.empty() ? "" : ", ";
        list += textOf(element);
    }
    return list;
}

/// The texts with ", " between two.
std::string joined(std::vector<std::string> const& texts);

/// The parts of a text between its line breaks.
std::vector<std::string_view> linesOf(std::string_view text);

/// The types of a package that are classes, and those that aren't.
std::vector<Type const*> classesOf(Package const& package);
std::vector<Type const*> dataTypesOf(Package const& package);

} // namespace velum::describe
