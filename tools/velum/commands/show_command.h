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
    int drawPicture() const;

    std::vector<std::string> arguments_;
    std::string picture_; ///< The path of what is drawn.
    FailOnOption failOn_;
};

} // namespace velum::commands
