#include "commands/import_command.h"

#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "model/dictionary.h"
#include "model/objects.h"
#include "report/printers.h"

#include <iostream>
#include <qob_store/store.h>
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

bool save(QOB::Model const& model, std::string const& output) {
    try {
        QOB::Store::save(model, output);
        return true;
    } catch (QOB::StoreError const& error) {
        std::cerr << "velum: " << report::inOneLine(error.what()) << "\n";
        return false;
    }
}

} // namespace

void ImportCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "import", "Read AUTOSAR R4 files and report what became of everything in them");
    command->add_option("FILE", files_, whatFilesAre)->required();
    CLI::Option* const json = command->add_flag("--json", isJson_, "Print the report as JSON");
    command
        ->add_option("-o,--output",
                     output_,
                     "Write all objects as a store (.velum), which every command takes instead of "
                     "the files; one that is there is replaced")
        ->type_name("FILE");
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
    const report::Input input = load(files_, dictionary, options, output_);
    if (!print(isJson_ ? report::printJson(input) : report::printText(input, withOmissions_))) {
        return failed;
    }
    if (!input.documents.isKept()) {
        return inputAtFault;
    }
    if (isVerbose_ && !printObjects(dictionary.model())) {
        return failed;
    }
    if (!output_.empty() && !save(dictionary.model(), output_)) {
        return failed;
    }
    return failOn.fails(input.documents) ? inputAtFault : done;
}

} // namespace velum::commands
