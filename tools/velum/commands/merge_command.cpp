#include "commands/merge_command.h"

#include "commands/load.h"
#include "commands/output.h"
#include "merge/merge.h"
#include "merge/printers.h"
#include "model/dictionary.h"
#include "model/input_files.h"
#include "report/printers.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <qob_store/store.h>
#include <string_view>
#include <velum_arxml/source/input_error.h>
#include <velum_arxml/source/standard_input.h>

namespace velum::commands {

namespace {

/// As with `velum diff`, 1 is for what a person has to look at.
enum MergeExitCode {
    isMerged = 0,
    hasConflicts = 1,
    isWrongCall = 2,
    isUnreadableOrUnwritable = 3
};

std::vector<std::string> kindWords() {
    std::vector<std::string> words{"all"};
    for (auto const& [kind, word] : merge::conflictKinds) {
        words.emplace_back(word);
    }
    return words;
}

CLI::Option* addKinds(CLI::App& command,
                      std::string const& name,
                      std::vector<std::string>& kinds,
                      std::string const& help) {
    return command.add_option(name, kinds, help)
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::IsMember(kindWords()))
        ->type_name("KIND,...");
}

MergeExitCode tell(std::exception const& error) {
    std::cerr << "velum: " << report::inOneLine(error.what()) << "\n";
    return isUnreadableOrUnwritable;
}

} // namespace

void MergeCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "merge", "Bring together what two sides made of one release: by path, part and property");
    command->add_option("BASE", base_, "The release that both began with: a file or a folder")
        ->required()
        ->type_name("FILE");
    command->add_option("OURS", ours_, "What one side made of it")->required()->type_name("FILE");
    command->add_option("THEIRS", theirs_, "What the other side made of it")
        ->required()
        ->type_name("FILE");
    command
        ->add_option("-o,--output",
                     output_,
                     "Where to write the result: a file, a store (.velum), or a folder with "
                     "--layout packages")
        ->required()
        ->type_name("FILE");
    addKinds(*command,
             "--ours",
             decidedForOurs_,
             "Conflicts of these kinds are decided for ours: value, order, added, removed, "
             "renamed, class, all");
    addKinds(*command, "--theirs", decidedForTheirs_, "Those that are decided for theirs");
    command->add_flag("--json", isJson_, "Print the conflicts as JSON");
    arxml_.addTo(*command);
    command->footer("Exit codes: 0 merged; 1 there are conflicts, and nothing is written; 2 wrong "
                    "usage; 3 a file cannot be read or written.");
}

/// A kind that is named counts more than "all".
merge::Resolutions MergeCommand::resolutions() const {
    merge::Resolutions all;
    auto const has = [](std::vector<std::string> const& words, std::string_view word) {
        return std::find(words.begin(), words.end(), word) != words.end();
    };
    for (auto const& [kind, word] : merge::conflictKinds) {
        for (std::string_view const each : {word, std::string_view("all")}) {
            if (has(decidedForOurs_, each)) {
                all.emplace(kind, merge::Taken::ours);
            } else if (has(decidedForTheirs_, each)) {
                all.emplace(kind, merge::Taken::theirs);
            }
        }
    }
    return all;
}

/// In the form that every command reads from a file of this name.
void MergeCommand::write(QOB::Model const& merged) const {
    if (model::isStore(output_)) {
        QOB::Store::save(merged, output_);
    } else {
        arxml_.write(merged, output_);
    }
}

int MergeCommand::run() const {
    for (std::string const& word : decidedForTheirs_) {
        bool const isInOurs = std::find(decidedForOurs_.begin(), decidedForOurs_.end(), word) !=
                              decidedForOurs_.end();
        if (isInOurs) {
            std::cerr << "velum: The kind is decided for both sides: " << word << ".\n";
            return isWrongCall;
        }
    }
    std::vector<std::string> const releases{base_, ours_, theirs_};
    if (std::count(releases.begin(), releases.end(), arxml::standardInput) > 1) {
        std::cerr << "velum: The standard input (-) can be read once only.\n";
        return isWrongCall;
    }
    try {
        model::Dictionary base;
        model::Dictionary ours;
        model::Dictionary theirs;
        tellFailure(load({base_}, base, {}, output_));
        tellFailure(load({ours_}, ours, {}, output_));
        tellFailure(load({theirs_}, theirs, {}, output_));
        merge::Outcome const outcome =
            merge::mergeModels(base.model(), ours.model(), theirs.model(), resolutions());
        if (outcome.isMerged()) {
            write(ours.model());
        }
        if (!print(isJson_ ? printJson(outcome) : printText(outcome))) {
            return isUnreadableOrUnwritable;
        }
        return outcome.isMerged() ? isMerged : hasConflicts;
    } catch (arxml::InputError const& error) {
        return tell(error);
    } catch (QOB::StoreError const& error) {
        return tell(error);
    }
}

} // namespace velum::commands
