#pragma once

#include "commands/arxml_output.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace velum::commands {

/// `velum export`: writes every object with its properties for other programs.
class ExportCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::vector<std::string> files_;
    std::string format_ = "json";
    std::string output_;
    ArxmlOutput arxml_;
};

} // namespace velum::commands
