#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace velum::commands {

/// `velum diff`: reports what changed between two releases of a data dictionary.
class DiffCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::string oldRelease_;
    std::string newRelease_;
    std::vector<std::string> oldFiles_;
    std::vector<std::string> newFiles_;
    std::vector<std::string> ignored_;
    std::string class_;
    bool isJson_ = false;
    bool isSummary_ = false;
};

} // namespace velum::commands
