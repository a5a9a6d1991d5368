#include <array>
#include <optional>
#include <velum_arxml/notation/scripts.h>

namespace velum::arxml {

namespace {

/// Digits, then plus and minus.
using Scripts = std::array<std::string_view, 12>;

constexpr Scripts raised = {"\u2070",
                            "\u00B9",
                            "\u00B2",
                            "\u00B3",
                            "\u2074",
                            "\u2075",
                            "\u2076",
                            "\u2077",
                            "\u2078",
                            "\u2079",
                            "\u207A",
                            "\u207B"};
constexpr Scripts lowered = {"\u2080",
                             "\u2081",
                             "\u2082",
                             "\u2083",
                             "\u2084",
                             "\u2085",
                             "\u2086",
                             "\u2087",
                             "\u2088",
                             "\u2089",
                             "\u208A",
                             "\u208B"};

std::optional<std::string> inScript(std::string_view text, Scripts const& scripts) {
    std::string script;
    for (const char c : text) {
        const std::size_t place = std::string_view("0123456789+-").find(c);
        if (place == std::string_view::npos) {
            return std::nullopt;
        }
        script += scripts[place];
    }
    return script;
}

} // namespace

std::string superscript(std::string_view text) {
    return inScript(text, raised).value_or("^" + std::string(text));
}

std::string subscript(std::string_view text) {
    return inScript(text, lowered).value_or("_" + std::string(text));
}

} // namespace velum::arxml
