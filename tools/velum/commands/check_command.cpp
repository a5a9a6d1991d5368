#include "commands/check_command.h"

#include "check/rules.h"
#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "dictionary/dictionary.h"
#include "report/printers.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>

namespace velum::commands {

namespace {

std::string asText(const std::vector<check::Issue>& issues) {
    std::string text;
    for (const check::Issue& issue : issues) {
        text += report::inOneLine(issue.path);
        text += ": ";
        text += word(issue.severity);
        text += ": ";
        text += issue.rule;
        text += ": ";
        text += report::inOneLine(issue.text);
        text += '\n';
    }
    return text;
}

std::string asJson(const std::vector<check::Issue>& issues) {
    using Json = nlohmann::ordered_json;
    Json list = Json::array();
    for (const check::Issue& issue : issues) {
        list.push_back({{"path", issue.path},
                        {"rule", issue.rule},
                        {"severity", word(issue.severity)},
                        {"text", issue.text}});
    }
    const Json all = {{"issues", std::move(list)}};
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

void CheckCommand::addTo(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("check", "Report what AUTOSAR files say that is legal and yet doubtful");
    command->add_option("FILE", files_, "The files to read (.arxml)")->required();
    command->add_flag("--json", isJson_, "Print the issues as JSON");
}

int CheckCommand::run() const {
    dictionary::Dictionary dictionary;
    const dictionary::Import import = load(files_, dictionary);
    const auto issues = check::checkModel(dictionary.model());
    if (!print(isJson_ ? asJson(issues) : asText(issues))) {
        return failed;
    }
    const bool hasErrors = std::any_of(issues.begin(), issues.end(), [](const check::Issue& issue) {
        return issue.severity == check::Severity::error;
    });
    if (import.report().hasFaults()) {
        std::cerr << "velum: Something is wrong in the files; \"velum import\" tells what.\n";
    }
    return hasErrors || import.report().hasFaults() ? inputAtFault : done;
}

} // namespace velum::commands
