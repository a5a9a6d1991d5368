#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace velum::commands {

/// `velum sql`: runs a query of a store and prints its rows.
class SqlCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::string file_;
    std::string query_;
    bool isJson_ = false;
    bool isCsv_ = false;
};

} // namespace velum::commands
