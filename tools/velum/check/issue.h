#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <velum_arxml/reading/sources.h>

namespace velum::check {

/// How much an issue matters; the first matters most.
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

/// What is looked for.
struct Rule {
    std::string_view id;
    Severity severity; ///< Of its issues.
    std::string_view description;
};

/// All rules, by id.
std::vector<Rule> const& rules();

/// Null if there is none.
Rule const* findRule(std::string_view id);

/// One thing that the library holds without complaint and an engineer should know.
struct Issue {
    std::string path; ///< Of the object, or of the nearest one around it that has a path.
    Rule const* rule;
    std::string text; ///< A sentence.
    /// None of an object that came from no file; line 0 of one that came from a store.
    std::optional<arxml::Origin> place;

    bool hasLine() const { return place && place->position.line > 0; }
};

/// "FILE:LINE:COLUMN", "FILE" for a store, empty for no file.
std::string placeText(Issue const& issue);

/// Where the issues of one object go.
class Sink {
public:
    Sink(std::string const& path, std::vector<Issue>& issues) : path_(path), issues_(issues) {}

    void add(std::string_view rule, std::string text) const {
        issues_.push_back({path_, findRule(rule), std::move(text), std::nullopt});
    }

private:
    std::string const& path_;
    std::vector<Issue>& issues_;
};

} // namespace velum::check
