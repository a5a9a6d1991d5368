#include "check/baseline.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>
#include <velum_arxml/source/input_error.h>

namespace velum::check {

Baseline::Baseline(std::string const& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw arxml::InputError(file,
                                "The baseline cannot be opened (" +
                                    std::generic_category().message(errno) + ").");
    }
    try {
        const nlohmann::json written = nlohmann::json::parse(stream);
        for (auto const& issue : written.at("issues")) {
            ++known_[keyOf(issue.at("rule").get<std::string>(),
                           issue.at("path").get<std::string>(),
                           issue.at("text").get<std::string>())];
        }
    } catch (std::ios::failure const&) {
        throw arxml::InputError(file, "The baseline cannot be read; is it a file?");
    } catch (nlohmann::json::exception const&) {
        throw arxml::InputError(
            file, "This is no baseline; write one with \"velum check --json FILE... >BASELINE\".");
    }
}

std::string Baseline::keyOf(std::string_view rule, std::string_view path, std::string_view text) {
    std::string key(rule);
    for (const std::string_view part : {path, text}) {
        key += '\n';
        key += part;
    }
    return key;
}

std::vector<Issue> Baseline::withoutKnown(std::vector<Issue> issues) const {
    std::map<std::string, int> left = known_;
    issues.erase(std::remove_if(issues.begin(),
                                issues.end(),
                                [&left](Issue const& issue) {
                                    const auto known =
                                        left.find(keyOf(issue.rule->id, issue.path, issue.text));
                                    return known != left.end() && known->second-- > 0;
                                }),
                 issues.end());
    return issues;
}

} // namespace velum::check
