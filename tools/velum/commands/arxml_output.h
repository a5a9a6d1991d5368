#pragma once

#include <CLI/CLI.hpp>

#include <qob/qob.h>
#include <string>

namespace velum::commands {

/// How AUTOSAR files are written: the options of the commands that write some.
class ArxmlOutput {
public:
    void addTo(CLI::App& command);

    /// Writes the objects of a model; remarks about them go to the standard error.
    void write(QOB::Model const& model, std::string const& target) const;

private:
    std::string layout_ = "file";
    std::string schema_;
};

} // namespace velum::commands
