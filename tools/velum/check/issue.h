#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velum::check {

/// How much an issue matters.
enum class Severity : std::uint8_t {
    error,   ///< The data contradict themselves.
    warning, ///< Something is missing, or will surprise somebody.
    note,    ///< Worth knowing.
};

constexpr std::string_view word(Severity severity) {
    switch (severity) {
    case Severity::error:
        return "error";
    case Severity::warning:
        return "warning";
    case Severity::note:
        break;
    }
    return "note";
}

/// One thing that the library holds without complaint and an engineer should know.
struct Issue {
    std::string path;      ///< Of the object, or of the nearest one around it that has a path.
    std::string_view rule; ///< Its word.
    Severity severity;
    std::string text; ///< A sentence.
};

} // namespace velum::check
