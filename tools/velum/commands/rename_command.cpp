#include "commands/rename_command.h"

#include "commands/exit_code.h"
#include "commands/output.h"
#include "model/input_files.h"
#include "report/printers.h"

#include <algorithm>
#include <iostream>
#include <vector>
#include <velum_arxml/update.h>

namespace velum::commands {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isName(std::string const& name) {
    return !name.empty() && isLetter(name.front()) &&
           std::all_of(name.begin(), name.end(), [](char c) {
               return isLetter(c) || (c >= '0' && c <= '9') || c == '_';
           });
}

} // namespace

void RenameCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "rename",
        "Give the element at a path another name; all references in the files follow, and nothing "
        "else changes");
    command
        ->add_option(
            "FILE",
            arguments_,
            "Files to change (.arxml) or folders of them; then the path of the element and "
            "its new name")
        ->required()
        ->type_name("... PATH NEW-NAME");
}

int RenameCommand::run() const {
    if (arguments_.size() < 3) {
        std::cerr
            << "velum: Files, a path and a new name are needed: velum rename FILE... /A/B New\n";
        return wrongUsage;
    }
    std::string const& name = arguments_.back();
    std::string const& path = arguments_[arguments_.size() - 2];
    if (!isName(name) || path.empty() || path.front() != '/') {
        std::cerr << "velum: The path begins with a slash, and the name has letters, digits and "
                     "underlines: "
                  << report::inOneLine(path + " " + name) << "\n";
        return wrongUsage;
    }
    std::vector<std::string> const files(arguments_.begin(), arguments_.end() - 2);
    if (const auto store = std::find_if(files.begin(), files.end(), model::isStore);
        store != files.end()) {
        std::cerr << "velum: " << report::inOneLine(*store)
                  << ": This is a store; rename in the .arxml files, and import them again.\n";
        return inputAtFault;
    }
    const arxml::UpdateReport report =
        arxml::rename(model::inputFiles(files).documents, path, name);
    if (report.isRefused()) {
        std::cerr << "velum: " << report::inOneLine(report.refusal) << "\n";
        return inputAtFault;
    }
    const bool isOne = report.edits == 1;
    return print(std::to_string(report.edits) + (isOne ? " place" : " places") + " changed.\n")
               ? done
               : failed;
}

} // namespace velum::commands
