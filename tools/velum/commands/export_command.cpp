#include "commands/export_command.h"

#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "export/writers.h"
#include "model/dictionary.h"
#include "report/printers.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <system_error>

namespace velum::commands {

namespace {

namespace fs = std::filesystem;

/// A file that says on the standard error if it can't be written.
class OutputFile {
public:
    explicit OutputFile(fs::path path)
        : path_(std::move(path)), out_(path_, std::ios::binary | std::ios::trunc) {
        check();
    }

    bool write(std::string_view piece) {
        out_ << piece;
        return check();
    }
    bool close() {
        if (isGood_) {
            out_.close();
        }
        return check();
    }

private:
    bool check() {
        if (isGood_ && !out_) {
            isGood_ = false;
            std::cerr << "velum: " << report::inOneLine(path_.string())
                      << ": The file cannot be written (" << std::strerror(errno) << ").\n";
        }
        return isGood_;
    }

    fs::path path_;
    std::ofstream out_;
    bool isGood_ = true;
};

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
        "export", "Write every object with its properties, as JSON or as tables (CSV)");
    command->add_option("FILE", files_, whatFilesAre)->required();
    command->add_option("--format", format_, "json, or csv: a table for each class")
        ->check(CLI::IsMember({"json", "csv"}));
    command
        ->add_option("-o,--output",
                     output_,
                     "Where to write: a file (json), else the standard output, or a folder (csv)")
        ->type_name("FILE");
}

int ExportCommand::run() const {
    bool const isTables = format_ == "csv";
    if (isTables && output_.empty()) {
        std::cerr << "velum: Tables need a folder: --output FOLDER.\n";
        return wrongUsage;
    }
    model::Dictionary dictionary;
    tellFailure(load(files_, dictionary));
    bool const isWritten = isTables ? exportTables(dictionary.model(), output_)
                                    : exportJson(dictionary.model(), output_);
    return isWritten ? done : failed;
}

} // namespace velum::commands
