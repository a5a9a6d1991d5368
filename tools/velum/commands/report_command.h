#pragma once

#include "commands/fail_on_option.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace velum::commands {

/// `velum report`: writes a page for a browser about what files hold, or about what changed between
/// two releases.
class ReportCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    int reportOne() const;
    int reportDiff() const;

    std::vector<std::string> files_;
    std::vector<std::string> oldFiles_;
    std::vector<std::string> newFiles_;
    std::string output_;
    bool isDiff_ = false;
    FailOnOption failOn_;
};

} // namespace velum::commands
