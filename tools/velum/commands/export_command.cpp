#include "commands/export_command.h"

#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "export/writers.h"
#include "model/dictionary.h"

#include <filesystem>
#include <iostream>
#include <map>
#include <velum_arxml/writing/output_file.h>

namespace velum::commands {

namespace {

bool exportJson(QOB::Model const& model, std::string const& output) {
    if (output.empty()) {
        return exporting::writeJson(
            model, [](std::string_view piece) { return print(std::string(piece)); });
    }
    arxml::OutputFile file(output);
    exporting::writeJson(model, sinkTo(file));
    file.commit();
    return true;
}

void exportTables(QOB::Model const& model, std::filesystem::path const& folder) {
    arxml::makeOutputFolder(folder);
    arxml::OutputFiles files;
    std::map<std::string, arxml::OutputFile*, std::less<>> byClass;
    exporting::writeTables(model, [&](std::string_view metaclass, std::string_view piece) {
        auto found = byClass.find(metaclass);
        if (found == byClass.end()) {
            std::string const name(metaclass);
            found = byClass.emplace(name, &files.add(folder / (name + ".csv"))).first;
        }
        found->second->write(piece);
        return true;
    });
    files.commit();
}

} // namespace

void ExportCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "export", "Write every object: as an AUTOSAR file, as JSON or as tables (CSV)");
    command->add_option("FILE", files_, whatFilesAre)->required();
    command->add_option("--format", format_, "arxml, json, or csv: a table for each class")
        ->check(CLI::IsMember({"arxml", "csv", "json"}));
    arxml_.addTo(*command);
    command
        ->add_option("-o,--output",
                     output_,
                     "Where to write: a file (arxml, json), or a folder (csv, --layout packages); "
                     "json without it goes to the standard output")
        ->type_name("FILE");
}

int ExportCommand::run() const {
    bool const isTables = format_ == "csv";
    if (isTables && output_.empty()) {
        std::cerr << "velum: Tables need a folder: --output FOLDER.\n";
        return wrongUsage;
    }
    if (format_ == "arxml" && output_.empty()) {
        std::cerr << "velum: An AUTOSAR file needs a name: --output FILE.\n";
        return wrongUsage;
    }
    model::Dictionary dictionary;
    report::Input const input = load(files_, dictionary, {}, output_);
    tellFailure(input);
    if (format_ == "arxml") {
        arxml_.write(dictionary.model(), output_, input.stores.empty());
        return done;
    }
    if (isTables) {
        exportTables(dictionary.model(), output_);
        return done;
    }
    return exportJson(dictionary.model(), output_) ? done : failed;
}

} // namespace velum::commands
