#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace velum::commands {

/// `velum describe`: prints the metamodel with all that is known of it, or one class.
class DescribeCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    std::optional<std::string> class_;
    std::string format_ = "text";
};

} // namespace velum::commands
