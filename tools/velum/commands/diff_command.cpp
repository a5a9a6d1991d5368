#include "commands/diff_command.h"

#include "commands/class_names.h"
#include "commands/load.h"
#include "commands/output.h"
#include "diff/comparison.h"
#include "diff/printers.h"
#include "model/dictionary.h"
#include "report/printers.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <qob_store/store.h>
#include <velum_arxml/source/input_error.h>
#include <velum_arxml/source/standard_input.h>

namespace velum::commands {

namespace {

/// What the command ends with: 1 is for a difference, as it is with other programs that compare.
enum DiffExitCode { isSame = 0, isDifferent = 1, isWrongUsage = 2, isUnreadable = 3 };

bool isStandardInputIn(std::vector<std::string> const& files) {
    return std::find(files.begin(), files.end(), arxml::standardInput) != files.end();
}

std::string
textOf(diff::Comparison const& comparison, diff::Sides const& sides, bool isJson, bool isSummary) {
    if (isSummary) {
        return isJson ? summaryJson(comparison) : summaryText(comparison);
    }
    return isJson ? printJson(comparison, sides) : printText(comparison, sides);
}

} // namespace

void DiffCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "diff", "Report what changed between two releases: objects by path, with both values");
    CLI::Option* const first =
        command->add_option("OLD", oldRelease_, "The old release: a file, or a folder of files")
            ->type_name("FILE");
    CLI::Option* const second =
        command->add_option("NEW", newRelease_, "The new release")->type_name("FILE");
    CLI::Option* const older =
        command->add_option("--old", oldFiles_, "The old release as a list of files")
            ->type_name("FILE")
            ->excludes(first);
    CLI::Option* const newer =
        command->add_option("--new", newFiles_, "The new release as a list of files")
            ->type_name("FILE")
            ->excludes(first);
    first->needs(second);
    older->needs(newer);
    newer->needs(older);
    command
        ->add_option("--ignore", ignored_, "A property that doesn't count; may be given repeatedly")
        ->allow_extra_args(false)
        ->type_name("PROPERTY");
    command->add_option("--class", class_, "Only objects of this class and of those below it")
        ->type_name("CLASS");
    command->add_flag("--json", isJson_, "Print the differences as JSON");
    command->add_flag("--summary", isSummary_, "Print only how many objects differ");
    command->footer(
        "Exit codes: 0 the releases are the same; 1 they differ; 2 wrong usage; 3 a file "
        "cannot be read, or the report cannot be written.");
}

int DiffCommand::run() const {
    bool const areLists = oldRelease_.empty();
    if (areLists && oldFiles_.empty()) {
        std::cerr
            << "velum: Two releases are needed: \"velum diff OLD NEW\", or --old and --new.\n";
        return isWrongUsage;
    }
    diff::Options options;
    options.ignored = {ignored_.begin(), ignored_.end()};
    if (!areProperties(ignored_) || !findClass(class_, options.onlyClass)) {
        return isWrongUsage;
    }
    auto const oldOnes = areLists ? oldFiles_ : std::vector{oldRelease_};
    auto const newOnes = areLists ? newFiles_ : std::vector{newRelease_};
    if (isStandardInputIn(oldOnes) && isStandardInputIn(newOnes)) {
        std::cerr
            << "velum: The standard input (-) can be read once only; give one of the releases "
               "as a file.\n";
        return isWrongUsage;
    }
    auto const tell = [](std::exception const& error) {
        std::cerr << "velum: " << report::inOneLine(error.what()) << "\n";
        return isUnreadable;
    };
    try {
        model::Dictionary older;
        model::Dictionary newer;
        tellFailure(load(oldOnes, older));
        tellFailure(load(newOnes, newer));
        model::Addresses oldAddresses;
        model::Addresses newAddresses;
        diff::Sides const sides{oldAddresses, newAddresses};
        diff::Comparison const comparison =
            diff::compareModels(older.model(), newer.model(), sides, options);
        if (!print(textOf(comparison, sides, isJson_, isSummary_))) {
            return isUnreadable;
        }
        return comparison.isSame() ? isSame : isDifferent;
    } catch (arxml::InputError const& error) {
        return tell(error);
    } catch (QOB::StoreError const& error) {
        return tell(error);
    }
}

} // namespace velum::commands
