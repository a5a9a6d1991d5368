#pragma once

#include "commands/arxml_output.h"
#include "merge/conflict.h"

#include <CLI/CLI.hpp>

#include <qob/qob.h>
#include <string>
#include <vector>

namespace velum::commands {

/// `velum merge`: brings together what two sides made of one data dictionary.
class MergeCommand {
public:
    void addTo(CLI::App& app);
    int run() const;

private:
    merge::Resolutions resolutions() const;
    void write(QOB::Model const& merged) const;

    std::string base_;
    std::string ours_;
    std::string theirs_;
    std::string output_;
    std::vector<std::string> decidedForOurs_;
    std::vector<std::string> decidedForTheirs_;
    bool isJson_ = false;
    ArxmlOutput arxml_;
};

} // namespace velum::commands
