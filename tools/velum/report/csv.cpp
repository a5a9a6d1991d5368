#include "report/csv.h"

namespace velum::report {

std::string csvCell(std::string_view text) {
    bool const needsQuotes = text.empty() ||
                             text.find_first_of(",\"\r\n") != std::string_view::npos ||
                             text.front() == ' ' || text.back() == ' ';
    if (!needsQuotes) {
        return std::string(text);
    }
    std::string cell = "\"";
    for (char const c : text) {
        cell += c;
        cell += c == '"' ? "\"" : "";
    }
    return cell + '"';
}

} // namespace velum::report
