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
#include <velum_arxml/write.h>

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
    return isWritten && file.close();
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
        isWritten = file.close() && isWritten;
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
    command
        ->add_option("--layout", layout_, "Of arxml: one file, or one for each package in a folder")
        ->check(CLI::IsMember({"file", "packages"}));
    command
        ->add_option(
            "--schema", schema_, "Of arxml: the schema that the files name (AUTOSAR_00051)")
        ->type_name("NAME");
    command
        ->add_option("-o,--output",
                     output_,
                     "Where to write: a file (arxml, json), or a folder (csv, --layout packages); "
                     "json without it goes to the standard output")
        ->type_name("FILE");
}

/// The remarks about objects go to the standard error.
int ExportCommand::writeArxml(QOB::Model const& model) const {
    arxml::WriteOptions options;
    if (!schema_.empty()) {
        options.schema = schema_;
    }
    options.layout = layout_ == "packages" ? arxml::Layout::filePerPackage : arxml::Layout::oneFile;
    for (arxml::WriteFinding const& finding : arxml::write(model, output_, options).findings) {
        std::cerr << "velum: " << code(finding.remark) << ": "
                  << report::inOneLine(finding.path + ": " + finding.text) << "\n";
    }
    return done;
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
    tellFailure(load(files_, dictionary));
    if (format_ == "arxml") {
        return writeArxml(dictionary.model());
    }
    bool const isWritten = isTables ? exportTables(dictionary.model(), output_)
                                    : exportJson(dictionary.model(), output_);
    return isWritten ? done : failed;
}

} // namespace velum::commands
