#include "check/printers.h"

#include <nlohmann/json.hpp>

#include <array>
#include <velum_types/version.h>

namespace velum::check {

namespace {

using SarifJson = nlohmann::ordered_json;

/// The name of a file as a URI: the bytes that have a meaning there, or none, as %NN.
std::string uriOf(std::string const& file) {
    constexpr std::array<char, 16> digits = {
        '0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
    constexpr std::string_view plain = "-._~/";
    // An absolute name has an empty host; a colon in a relative one would look like a scheme.
    std::string uri = !file.empty() && file.front() == '/' ? "file://" : "";
    for (const char c : file) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        const bool isDigit = c >= '0' && c <= '9';
        if (isLetter || isDigit || plain.find(c) != std::string_view::npos) {
            uri += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            uri += '%';
            uri += digits[byte >> 4U];
            uri += digits[byte & 0xFU];
        }
    }
    return uri;
}

SarifJson ruleList() {
    SarifJson list = SarifJson::array();
    for (Rule const& rule : rules()) {
        list.push_back({{"id", rule.id},
                        {"shortDescription", {{"text", rule.description}}},
                        {"defaultConfiguration", {{"level", word(rule.severity)}}}});
    }
    return list;
}

SarifJson resultOf(Issue const& issue) {
    SarifJson location = {
        {"logicalLocations",
         SarifJson::array({{{"fullyQualifiedName", issue.path}, {"kind", "element"}}})}};
    if (issue.place) {
        location["physicalLocation"] = {{"artifactLocation", {{"uri", uriOf(issue.place->file)}}}};
    }
    if (issue.hasLine()) {
        location["physicalLocation"]["region"] = {{"startLine", issue.place->position.line},
                                                  {"startColumn", issue.place->position.column}};
    }
    return {{"ruleId", issue.rule->id},
            {"ruleIndex", issue.rule - rules().data()},
            {"level", word(issue.rule->severity)},
            {"message", {{"text", issue.text}}},
            {"locations", SarifJson::array({std::move(location)})}};
}

} // namespace

std::string printSarif(std::vector<Issue> const& issues) {
    SarifJson results = SarifJson::array();
    for (Issue const& issue : issues) {
        results.push_back(resultOf(issue));
    }
    const SarifJson driver = {
        {"name", "velum"}, {"version", velum_types_version}, {"rules", ruleList()}};
    const SarifJson run = {{"tool", {{"driver", driver}}},
                           {"columnKind", "unicodeCodePoints"},
                           {"results", std::move(results)}};
    const SarifJson log = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                           {"version", "2.1.0"},
                           {"runs", SarifJson::array({run})}};
    return log.dump(2, ' ', false, SarifJson::error_handler_t::replace) + "\n";
}

} // namespace velum::check
