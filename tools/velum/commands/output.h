#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <velum_arxml/writing/output_file.h>

namespace velum::commands {

/// Prints a text on the standard output; false, with a word on the standard error, if that fails.
bool print(std::string const& text);

/// Takes the pieces of a document into a file; raises `arxml::OutputError` if that fails.
inline std::function<bool(std::string_view piece)> sinkTo(arxml::OutputFile& file) {
    return [&file](std::string_view piece) {
        file.write(piece);
        return true;
    };
}

} // namespace velum::commands
