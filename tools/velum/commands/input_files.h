#pragma once

#include <string>
#include <vector>

namespace velum::commands {

/// The files that the arguments of a command stand for, each once: a folder stands for all `.arxml`
/// and `.arxml.gz` files in it and in its folders, `-` for the standard input, anything else for
/// itself. Raises `arxml::InputError` if a folder can't be read or has no such file.
std::vector<std::string> inputFiles(std::vector<std::string> const& arguments);

/// Whether the argument names something to read, as opposed to a path of elements.
bool isInput(std::string const& argument);

} // namespace velum::commands
