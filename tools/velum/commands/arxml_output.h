#pragma once

#include <CLI/CLI.hpp>

#include <qob/qob.h>
#include <string>

namespace velum::commands {

/// How AUTOSAR files are written: the options of the commands that write some.
class ArxmlOutput {
public:
    void addTo(CLI::App& command);

    /// Writes the objects of a model; remarks about them go to the standard error. What is written
    /// is read back, unless all objects are as they were read from AUTOSAR files.
    void write(QOB::Model const& model, std::string const& target, bool isAsRead = false) const;

private:
    std::string layout_ = "file";
    std::string schema_;
};

} // namespace velum::commands
