#pragma once

#include <string>
#include <vector>

namespace velum::model {
struct Metaclass;
} // namespace velum::model

namespace velum::commands {

/// Finds the class of an option; none for an empty name. False, with a word on the standard error,
/// if there is no such class.
bool findClass(std::string const& name, model::Metaclass const*& found);

/// Whether all texts are names of properties; says on the standard error which one isn't.
bool areProperties(std::vector<std::string> const& names);

} // namespace velum::commands
