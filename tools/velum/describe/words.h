#pragma once

#include "describe/metamodel.h"

#include <string>
#include <string_view>
#include <vector>

namespace velum::describe {

/// "0..1", "1..*".
std::string multiplicity(const Property& property);

/// What a property is beside its type: "composite", "derived", "read-only", "ordered",
/// "non-unique", "private".
std::vector<std::string> traits(const Property& property);

/// The name of a type as it is written within a package: types of others stand behind the last
/// name of theirs, "foundation.Element".
std::string nameIn(const Package& here, const Type& type);

/// The same for a property with its class in front.
std::string nameIn(const Package& here, const Property& property);

/// The last name of a package.
std::string_view shortName(const Package& package);

/// "class", "abstract class", "data type", "enumeration".
std::string_view kindOf(const Type& type);

/// "qob_metaclass", or "name = value".
std::string textOf(const Tag& tag);

/// "35 classes with 109 properties, 6 data types".
std::string sumOf(const Package& package);

/// What `textOf` makes of each element, with ", " between two.
template <class Elements, class TextOf>
std::string listOf(const Elements& elements, TextOf textOf) {
    std::string list;
    for (const auto& element : elements) {
        list += list.empty() ? "" : ", ";
        list += textOf(element);
    }
    return list;
}

/// The texts with ", " between two.
std::string joined(const std::vector<std::string>& texts);

/// The parts of a text between its line breaks.
std::vector<std::string_view> linesOf(std::string_view text);

/// The types of a package that are classes, and those that aren't.
std::vector<const Type*> classesOf(const Package& package);
std::vector<const Type*> dataTypesOf(const Package& package);

} // namespace velum::describe
