#pragma once

#include "describe/metamodel.h"

#include <string>

namespace velum::describe {

/// As text of at most 100 columns for a terminal: a package, data types first and each kind by
/// name, or one type, with its package and the names of what it inherits.
std::string printText(Package const& package);
std::string printText(Type const& type);

/// As a class diagram in the language of Graphviz: a package, or one type with the classes around
/// it.
std::string printDot(Package const& package);
std::string printDot(Type const& type);

/// As Markdown: the reference page of the whole metamodel, or the section of one type.
std::string printMarkdown(Metamodel const& metamodel);
std::string printMarkdown(Type const& type);

} // namespace velum::describe
