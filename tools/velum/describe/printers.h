#pragma once

#include "describe/metamodel.h"

#include <string>

namespace velum::describe {

/// As text of at most 100 columns for a terminal: a package, data types first and each kind by
/// name, or one type, with its package and the names of what it inherits.
std::string printText(const Package& package);
std::string printText(const Type& type);

/// As a class diagram in the language of Graphviz: a package, or one type with the classes around
/// it.
std::string printDot(const Package& package);
std::string printDot(const Type& type);

/// As Markdown: the reference page of the whole metamodel, or the section of one type.
std::string printMarkdown(const Metamodel& metamodel);
std::string printMarkdown(const Type& type);

} // namespace velum::describe
