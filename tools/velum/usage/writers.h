#pragma once

#include "usage/command_tree.h"

#include <string>
#include <vector>

namespace velum::usage {

/// Words that an option takes, which the declaration of the command line doesn't list.
struct Vocabulary {
    std::vector<std::string> classes;    ///< For a value called CLASS.
    std::vector<std::string> properties; ///< For one whose name begins with PROPERTY.
};

/// A completion script for bash: commands, options, and values by the names they have in the help.
/// FILE completes to folders and the files that can be read, PATH to any file.
std::string bashCompletion(Command const& program, Vocabulary const& words);

/// The manual page, for man(1).
std::string manualPage(Command const& program, std::string const& version);

} // namespace velum::usage
