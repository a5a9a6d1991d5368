#include "commands/check_command.h"

#include "check/baseline.h"
#include "check/printers.h"
#include "check/rules.h"
#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "model/dictionary.h"

#include <algorithm>
#include <iostream>

namespace velum::commands {

namespace {

std::vector<std::string> ruleIds() {
    std::vector<std::string> ids;
    for (check::Rule const& rule : check::rules()) {
        ids.emplace_back(rule.id);
    }
    return ids;
}

} // namespace

void CheckCommand::addTo(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("check", "Report what AUTOSAR files say that is legal and yet doubtful");
    command->add_option("FILE", files_, whatFilesAre)->required();
    command->add_option("--rule", rules_, "Report the issues of these rules only")
        ->type_name("RULE,...")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::IsMember(ruleIds()));
    command->add_option("--severity", severity_, "Report issues of this severity or a higher one")
        ->check(CLI::IsMember({"error", "warning", "note"}));
    command->add_option("--baseline", baseline_, "Leave out the issues of an earlier --json")
        ->type_name("FILE");
    CLI::Option* const format =
        command->add_option("--format", format_, "text, json or sarif (SARIF 2.1.0)")
            ->check(CLI::IsMember({"text", "json", "sarif"}));
    command->add_flag("--json", isJson_, "The same as --format json")->excludes(format);
    failOn_.addTo(*command);
}

bool CheckCommand::isWanted(check::Issue const& issue) const {
    using check::Severity;
    const Severity least = severity_ == "error"     ? Severity::error
                           : severity_ == "warning" ? Severity::warning
                                                    : Severity::note;
    return issue.rule->severity <= least &&
           (rules_.empty() ||
            std::find(rules_.begin(), rules_.end(), issue.rule->id) != rules_.end());
}

std::string CheckCommand::printed(std::vector<check::Issue> const& issues) const {
    if (format_ == "sarif") {
        return printSarif(issues);
    }
    return isJson_ || format_ == "json" ? printJson(issues) : printText(issues);
}

int CheckCommand::run() const {
    std::optional<check::Baseline> baseline;
    if (baseline_) {
        baseline.emplace(*baseline_);
    }
    model::Dictionary dictionary;
    arxml::Sources sources;
    arxml::Options options;
    options.sources = &sources;
    const report::Input input = load(files_, dictionary, options);
    auto issues = check::checkModel(dictionary.model(), sources, input);
    issues.erase(std::remove_if(issues.begin(),
                                issues.end(),
                                [this](check::Issue const& issue) { return !isWanted(issue); }),
                 issues.end());
    if (baseline) {
        issues = baseline->withoutKnown(std::move(issues));
    }
    if (!print(printed(issues))) {
        return failed;
    }
    const bool hasErrors = std::any_of(issues.begin(), issues.end(), [](check::Issue const& issue) {
        return issue.rule->severity == check::Severity::error;
    });
    const bool isInputAtFault = tellFailure(input, failOn_.value());
    return hasErrors || isInputAtFault ? inputAtFault : done;
}

} // namespace velum::commands
