#pragma once

#include "check/issue.h"
#include "commands/fail_on_option.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace velum::commands {

/// `velum check`: reports what the library holds without complaint and an engineer should know.
class CheckCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    bool isWanted(check::Issue const& issue) const;
    std::string printed(std::vector<check::Issue> const& issues) const;

    std::vector<std::string> files_;
    std::vector<std::string> rules_; // all if there are none
    std::string severity_ = "note";
    std::string format_ = "text";
    std::optional<std::string> baseline_;
    bool isJson_ = false;
    FailOnOption failOn_;
};

} // namespace velum::commands
