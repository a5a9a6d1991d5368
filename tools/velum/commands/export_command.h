#pragma once

#include <CLI/CLI.hpp>

#include <qob/qob.h>
#include <string>
#include <vector>

namespace velum::commands {

/// `velum export`: writes every object with its properties for other programs.
class ExportCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    int writeArxml(QOB::Model const& model) const;

    std::vector<std::string> files_;
    std::string format_ = "json";
    std::string output_;
    std::string layout_ = "file";
    std::string schema_;
};

} // namespace velum::commands
