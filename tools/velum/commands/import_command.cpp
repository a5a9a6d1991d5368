#include "commands/import_command.h"

#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "model/dictionary.h"
#include "model/objects.h"
#include "report/printers.h"

#include <sstream>

namespace velum::commands {

namespace {

/// Every object of the model once, those that are contained below what contains them.
bool printObjects(QOB::Model const& model) {
    for (QOB::ClassObject const& object : model::freeObjects(model)) {
        std::ostringstream text;
        text << '\n';
        QOB::print(text, object);
        if (!print(text.str())) {
            return false;
        }
    }
    return true;
}

} // namespace

void ImportCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "import", "Read AUTOSAR R4 files and report what became of everything in them");
    command->add_option("FILE", files_, whatFilesAre)->required();
    CLI::Option* const json = command->add_flag("--json", isJson_, "Print the report as JSON");
    command->add_flag("--strict", isStrict_, "Keep nothing if anything is wrong in the files");
    command->add_flag(
        "--skipped", withOmissions_, "List the types and methods of which no object is made");
    failOn_.addTo(*command);
    command
        ->add_flag(
            "--verbose", isVerbose_, "After the report, print every object with all that it holds")
        ->excludes(json);
}

int ImportCommand::run() const {
    model::Dictionary dictionary;
    arxml::Options options;
    const report::FailOn failOn = failOn_.value();
    if (isStrict_) {
        options.isAcceptable = [&failOn](arxml::Report const& all) { return !failOn.fails(all); };
    }
    const arxml::Report report = load(files_, dictionary, options);
    if (!print(isJson_ ? report::printJson(report) : report::printText(report, withOmissions_))) {
        return failed;
    }
    if (isVerbose_ && !printObjects(dictionary.model())) {
        return failed;
    }
    return failOn.fails(report) ? inputAtFault : done;
}

} // namespace velum::commands
