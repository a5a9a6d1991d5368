#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace velum::usage {

/// An option of a command, or one of its arguments without a dash.
struct Option {
    std::vector<std::string> names;   ///< "-o", "--output"; of an argument its one name ("FILE").
    std::string value;                ///< What it takes ("PATH"); empty for a flag.
    std::vector<std::string> choices; ///< All values, if there are no others.
    std::string description;
    bool isArgument = false;
    bool isMany = false;
    bool isRequired = false;
};

/// A command, or the program itself with its commands, as its help tells it.
struct Command {
    std::string name;
    std::string description;
    std::string footer;
    std::vector<Option> options;
    std::vector<Command> commands;
};

/// Reads what a program declares of its command line.
Command commandTree(CLI::App const& app);

} // namespace velum::usage
