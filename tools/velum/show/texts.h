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
std::string textOf(const QOB::String& text);

/// The name of an object; empty if it has none.
std::string nameOf(const foundation::NamedElement& element);

/// "unsigned 8-bit integer", with range, unit and computation method; without the parts of a type
/// that has some.
std::string typeText(const foundation::ValueType& type);

/// The same with the name of the type before it, as where it is used.
std::string usedTypeText(const foundation::ValueType& type);

/// "an unknown type", with what the file calls it: of an object whose type is not there.
std::string unknownTypeText(const QOB::ClassObject& object);

/// The symbol of a unit with its raised and lowered parts, or else its name.
std::string unitText(const types::Unit& unit);

/// What a method computes.
std::string methodText(const types::CompuMethod& method);

/// A value specification in one line.
std::string valueText(const foundation::ValueSpecification& value);

/// "3 x 4"; "?" for a size that is unknown, the constant's name for a symbolic one.
std::string dimensionsText(const types::Matrix& matrix);

} // namespace velum::show
