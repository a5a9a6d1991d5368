#include "arxml/input_error.h"
#include "commands/check_command.h"
#include "commands/classes_command.h"
#include "commands/describe_command.h"
#include "commands/exit_code.h"
#include "commands/import_command.h"
#include "commands/show_command.h"
#include "report/printers.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>
#include <velum_types/version.h>

namespace {

using velum::commands::ExitCode;

int run(int argc, char** argv) {
    CLI::App app("Holds automotive data types in a model and shows them.", "velum");
    app.set_version_flag("--version", std::string("velum ") + velum_types_version);
    app.require_subcommand(1);

    velum::commands::ImportCommand import;
    velum::commands::ShowCommand show;
    velum::commands::CheckCommand check;
    velum::commands::ClassesCommand classes;
    velum::commands::DescribeCommand describe;
    import.addTo(app);
    show.addTo(app);
    check.addTo(app);
    classes.addTo(app);
    describe.addTo(app);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? ExitCode::done : ExitCode::wrongUsage;
    }
    if (app.got_subcommand("import")) {
        return import.run();
    }
    if (app.got_subcommand("show")) {
        return show.run();
    }
    if (app.got_subcommand("check")) {
        return check.run();
    }
    return app.got_subcommand("classes") ? classes.run() : describe.run();
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const velum::arxml::InputError& error) {
        std::cerr << "velum: " << velum::report::inOneLine(error.what()) << "\n";
        return ExitCode::inputAtFault;
    } catch (const std::exception& error) {
        std::cerr << "velum: " << velum::report::inOneLine(error.what()) << "\n";
        return ExitCode::failed;
    }
}
