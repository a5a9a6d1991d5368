#pragma once

#include "dictionary/import.h"

#include <string>
#include <vector>

namespace velum::commands {

/// What the help of a command says of its files.
inline constexpr char whatFilesAre[] =
    "Files to read (.arxml, .arxml.gz), folders of them, or - for the standard input";

/// What a command that reports something else says where the import has found faults.
inline constexpr char whereFaultsAre[] =
    "velum: Something is wrong in the files; \"velum import\" tells what.\n";

/// Imports the files that the arguments stand for into the dictionary, and tells a person at a
/// terminal how far it is.
dictionary::Import load(const std::vector<std::string>& arguments,
                        dictionary::Dictionary& dictionary,
                        dictionary::ImportOptions options = {});

} // namespace velum::commands
