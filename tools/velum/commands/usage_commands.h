#pragma once

#include <CLI/CLI.hpp>

namespace velum::commands {

/// `velum completion`: prints the completion script for bash.
class CompletionCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    CLI::App const* app_ = nullptr;
};

/// `velum manual`: prints the manual page.
class ManualCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    CLI::App const* app_ = nullptr;
};

} // namespace velum::commands
