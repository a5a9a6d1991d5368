#pragma once

#include <string>
#include <vector>

namespace velum::model {

/// The files that the arguments of a command stand for, each once.
struct InputFiles {
    std::vector<std::string> documents; ///< AUTOSAR files, `-` for the standard input
    std::vector<std::string> stores;
};

/// A folder stands for all `.arxml`, `.arxml.gz` and `.velum` files in it and in its folders but
/// for `leftOut`, or the files in that if it is a folder inside; anything else for itself. Raises
/// `arxml::InputError` if a folder can't be read or has no such file.
InputFiles inputFiles(std::vector<std::string> const& arguments, std::string const& leftOut = "");

/// Whether the argument names something to read, as opposed to a path of elements.
bool isInput(std::string const& argument);

/// Whether a file is a store: by its first bytes, or else by its name.
bool isStore(std::string const& file);

} // namespace velum::model
