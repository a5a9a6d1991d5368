#pragma once

#include "model/dictionary.h"
#include "report/fail_on.h"

#include <string>
#include <vector>
#include <velum_arxml/read.h>

namespace velum::commands {

/// What the help of a command says of its files.
inline constexpr char whatFilesAre[] =
    "Files to read (.arxml, .arxml.gz), folders of them, or - for the standard input";

/// Reads the files that the arguments stand for into the dictionary, and tells a person at a
/// terminal how far it is.
arxml::Report load(std::vector<std::string> const& arguments,
                   model::Dictionary const& dictionary,
                   arxml::Options options = {});

/// Says on the standard error what is wrong in the files, if something is: what a command does that
/// reports something else. Returns whether it is.
bool tellFailure(arxml::Report const& report, report::FailOn const& failOn = {});

} // namespace velum::commands
