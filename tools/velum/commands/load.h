#pragma once

#include "dictionary/import.h"

#include <string>
#include <vector>

namespace velum::commands {

/// Imports the files into the dictionary and tells a person at a terminal how far it is.
dictionary::Import load(const std::vector<std::string>& files,
                        dictionary::Dictionary& dictionary,
                        bool isStrict = false);

} // namespace velum::commands
