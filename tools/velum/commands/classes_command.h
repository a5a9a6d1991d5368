#pragma once

#include <CLI/CLI.hpp>

namespace velum::commands {

/// `velum classes`: prints the tree of metaclasses with their properties.
class ClassesCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    bool withProperties_ = false;
};

} // namespace velum::commands
