#include "commands/export_command.h"

#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "commands/output_file.h"
#include "export/writers.h"
#include "model/dictionary.h"
#include "report/printers.h"

#include <filesystem>
#include <iostream>
#include <map>
#include <system_error>

namespace velum::commands {

namespace {

namespace fs = std::filesystem;

bool exportJson(QOB::Model const& model, std::string const& output) {
    if (output.empty()) {
        return exporting::writeJson(
            model, [](std::string_view piece) { return print(std::string(piece)); });
    }
    OutputFile file(output);
    bool const isWritten =
        exporting::writeJson(model, [&file](std::string_view piece) { return file.write(piece); });
    return isWritten && file.commit();
}

bool exportTables(QOB::Model const& model, fs::path const& folder) {
    std::error_code fault;
    fs::create_directories(folder, fault);
    if (fault) {
        std::cerr << "velum: " << report::inOneLine(folder.string())
                  << ": The folder cannot be made (" << fault.message() << ").\n";
        return false;
    }
    std::map<std::string, OutputFile, std::less<>> files;
    auto const sink = [&](std::string_view metaclass, std::string_view piece) {
        auto found = files.find(metaclass);
        if (found == files.end()) {
            std::string const name(metaclass);
            found = files.try_emplace(name, folder / (name + ".csv")).first;
        }
        return found->second.write(piece);
    };
    bool isWritten = exporting::writeTables(model, sink);
    for (auto& [metaclass, file] : files) {
        isWritten = isWritten && file.close();
    }
    for (auto& [metaclass, file] : files) {
        isWritten = isWritten && file.commit();
    }
    return isWritten;
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
    bool const isWritten = isTables ? exportTables(dictionary.model(), output_)
                                    : exportJson(dictionary.model(), output_);
    return isWritten ? done : failed;
}

} // namespace velum::commands
