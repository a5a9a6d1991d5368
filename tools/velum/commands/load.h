#pragma once

#include "model/dictionary.h"
#include "report/fail_on.h"
#include "report/input.h"

#include <string>
#include <vector>
#include <velum_arxml/read.h>

namespace velum::commands {

/// What the help of a command says of its files.
inline constexpr char whatFilesAre[] =
    "Files to read (.arxml, .arxml.gz, .velum), folders of them, or - for the standard input";

/// Reads the files that the arguments stand for into the dictionary, and tells a person at a
/// terminal how far it is. Folders don't stand for the file `leftOut`, which the command writes,
/// nor for the files in a folder of that name. Raises `QOB::StoreError` for a store that can't be
/// read, `arxml::InputError` for any other file and for a store with a path that another file has.
report::Input load(std::vector<std::string> const& arguments,
                   model::Dictionary const& dictionary,
                   arxml::Options options = {},
                   std::string const& leftOut = "");

/// Says on the standard error what is wrong in the files, if something is: what a command does that
/// reports something else. Returns whether it is.
bool tellFailure(report::Input const& input, report::FailOn const& failOn = {});

} // namespace velum::commands
