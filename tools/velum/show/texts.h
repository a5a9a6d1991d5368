#pragma once

#include <cstddef>
#include <string>
#include <velum_types/types.h>

namespace velum::show {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

/// So many types in each other are told, "..." stands for the others.
constexpr std::size_t deepestType = 64;

/// A text of a file, in one line whatever is in it; empty if it is invalid.
std::string textOf(QOB::String const& text);

/// The name of an object; empty if it has none.
std::string nameOf(foundation::NamedElement const& element);

/// "unsigned 8-bit integer", with range, unit and computation method; without the parts of a type
/// that has some.
std::string typeText(foundation::ValueType const& type);

/// The same with the name of the type before it, as where it is used.
std::string usedTypeText(foundation::ValueType const& type);

/// "an unknown type", with what the file calls it: of an object whose type is not there.
std::string unknownTypeText(QOB::ClassObject const& object);

/// The symbol of a unit with its raised and lowered parts, or else its name.
std::string unitText(types::Unit const& unit);

/// What a method computes.
std::string methodText(types::CompuMethod const& method);

/// A value specification in one line.
std::string valueText(foundation::ValueSpecification const& value);

/// "3 x 4"; "?" for a size that is unknown, the constant's name for a symbolic one.
std::string dimensionsText(types::Matrix const& matrix);

} // namespace velum::show
