#pragma once

#include "dictionary/import.h"
#include "report/fail_on.h"

#include <string>
#include <vector>

namespace velum::commands {

/// What the help of a command says of its files.
inline constexpr char whatFilesAre[] =
    "Files to read (.arxml, .arxml.gz), folders of them, or - for the standard input";

/// Imports the files that the arguments stand for into the dictionary, and tells a person at a
/// terminal how far it is.
dictionary::Import load(const std::vector<std::string>& arguments,
                        dictionary::Dictionary& dictionary,
                        dictionary::ImportOptions options = {});

/// Says on the standard error what is wrong in the files, if something is: what a command does that
/// reports something else. Returns whether it is.
bool tellFailure(dictionary::Import const& import, report::FailOn const& failOn = {});

} // namespace velum::commands
