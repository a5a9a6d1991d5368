#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <vector>

namespace velum::commands {

/// `velum find`: prints the paths of the objects that fit.
class FindCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::vector<std::string> files_;
    std::optional<std::string> name_;
    std::string class_;
    std::optional<std::string> unit_;
    std::optional<std::string> method_;
    std::vector<std::string> properties_;
    std::optional<std::string> usedBy_;
    std::optional<std::string> uses_;
    bool isUnused_ = false;
    bool withParts_ = false;
    bool isJson_ = false;
};

} // namespace velum::commands
