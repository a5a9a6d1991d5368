#include "commands/show_command.h"

#include "commands/exit_code.h"
#include "commands/load.h"
#include "commands/output.h"
#include "dictionary/dictionary.h"
#include "model/objects.h"
#include "report/printers.h"
#include "show/object_printer.h"

#include <filesystem>
#include <iostream>

namespace velum::commands {

namespace {

/// A path in the files begins like an absolute file name; the file wins.
bool isPath(const std::string& argument) {
    std::error_code ignored;
    return !argument.empty() && argument.front() == '/' &&
           !std::filesystem::exists(argument, ignored);
}

} // namespace

void ShowCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("show", "Print the types that AUTOSAR files hold");
    command
        ->add_option("FILE", arguments_, "The files to read (.arxml), then the path (/A/B) to show")
        ->required();
}

int ShowCommand::run() const {
    std::vector<std::string> files = arguments_;
    std::string path;
    if (files.size() > 1 && isPath(files.back())) {
        path = files.back();
        files.pop_back();
    }
    dictionary::Dictionary dictionary;
    const dictionary::Import import = load(files, dictionary);
    const auto objects = model::objectsAt(dictionary.model(), path);
    if (objects.empty() && !path.empty()) {
        std::cerr << "velum: Nothing in the files has the path (" << report::inOneLine(path)
                  << ").\n";
        return inputAtFault;
    }
    std::string text;
    for (const QOB::ClassObject& object : objects) {
        // What has no path was made for something that has one, and is told there.
        if (!model::pathOf(object).empty()) {
            text += show::objectText(object);
        }
    }
    if (!print(text)) {
        return failed;
    }
    if (import.report().hasFaults()) {
        std::cerr << "velum: Something is wrong in the files; \"velum import\" tells what.\n";
        return inputAtFault;
    }
    return done;
}

} // namespace velum::commands
