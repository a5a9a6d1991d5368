#include "commands/output.h"

#include <iostream>

namespace velum::commands {

bool print(std::string const& text) {
    std::cout << text << std::flush;
    if (!std::cout) {
        std::cerr << "velum: The report cannot be written to the standard output.\n";
        return false;
    }
    return true;
}

} // namespace velum::commands
