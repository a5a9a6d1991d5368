#pragma once

#include "commands/fail_on_option.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace velum::commands {

/// `velum show`: prints what files hold, all of it or what lies at one path.
class ShowCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::vector<std::string> arguments_;
    FailOnOption failOn_;
};

} // namespace velum::commands
