#include "arxml/input_error.h"
#include "dictionary/dictionary.h"
#include "dictionary/import.h"
#include "report/printers.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <velum_types/types.h>

namespace {

enum ExitCode { done = 0, inputAtFault = 1, wrongUsage = 2, failed = 3 };

struct ImportCommand {
    std::string file;
    bool json = false;

    int run() const {
        velum::dictionary::Dictionary dictionary;
        const velum::dictionary::Import import({file}, dictionary);
        const velum::report::PrintJob job{import.report(), import.names(), import.paths()};
        std::cout << (json ? velum::report::printJson(job) : velum::report::printText(job))
                  << std::flush;
        if (!std::cout) {
            std::cerr << "velum: The report cannot be written to the standard output.\n";
            return failed;
        }
        return import.report().hasFaults() ? inputAtFault : done;
    }
};

int run(int argc, char** argv) {
    CLI::App app("Holds automotive data types in a model and shows them.", "velum");
    app.set_version_flag("--version", std::string("velum ") + velum_types_version);
    app.require_subcommand(1);

    ImportCommand import;
    CLI::App* const importApp =
        app.add_subcommand("import", "Read the integer types of an AUTOSAR R4 file");
    importApp->add_option("FILE", import.file, "The file to read (.arxml)")->required();
    importApp->add_flag("--json", import.json, "Print the report as JSON");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? done : wrongUsage;
    }
    Zorvane::metamodel::types::initialize();
    return import.run();
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const velum::arxml::InputError& error) {
        std::cerr << "velum: " << velum::report::inOneLine(error.what()) << "\n";
        return inputAtFault;
    } catch (const std::exception& error) {
        std::cerr << "velum: " << velum::report::inOneLine(error.what()) << "\n";
        return failed;
    }
}
