#pragma once

#include "commands/fail_on_option.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace velum::commands {

/// `velum import`: reads files and reports what became of everything in them.
class ImportCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::vector<std::string> files_;
    std::string output_;
    bool isJson_ = false;
    bool isStrict_ = false;
    bool isVerbose_ = false;
    bool withOmissions_ = false;
    FailOnOption failOn_;
};

} // namespace velum::commands
