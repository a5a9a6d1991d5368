#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace velum::commands {

/// `velum check`: reports what the library holds without complaint and an engineer should know.
class CheckCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::vector<std::string> files_;
    bool isJson_ = false;
};

} // namespace velum::commands
