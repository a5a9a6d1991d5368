#pragma once

#include "report/fail_on.h"

#include <CLI/CLI.hpp>

#include <string>

namespace velum::commands {

/// The option --fail-on of the commands that read files.
class FailOnOption {
public:
    void addTo(CLI::App& command);
    report::FailOn value() const { return isGiven_ ? report::FailOn(list_) : report::FailOn(); }

private:
    std::string list_;
    bool isGiven_ = false;
};

} // namespace velum::commands
