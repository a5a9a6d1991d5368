#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace velum::commands {

/// `velum rename`: gives an element another name in its files, with all references to it.
class RenameCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::vector<std::string> arguments_; ///< the files, the path, the new name
};

} // namespace velum::commands
