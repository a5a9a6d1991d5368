#include "commands/check_command.h"
#include "commands/classes_command.h"
#include "commands/describe_command.h"
#include "commands/diff_command.h"
#include "commands/exit_code.h"
#include "commands/export_command.h"
#include "commands/find_command.h"
#include "commands/import_command.h"
#include "commands/merge_command.h"
#include "commands/output.h"
#include "commands/rename_command.h"
#include "commands/report_command.h"
#include "commands/show_command.h"
#include "commands/sql_command.h"
#include "commands/usage_commands.h"
#include "report/printers.h"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <new>
#include <optional>
#include <qob_store/store.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <velum_arxml/source/input_error.h>
#include <velum_types/version.h>

namespace {

using velum::commands::ExitCode;

/// Parses the arguments. Returns an exit code if no command is to run: wrong usage, or --help.
std::optional<int> parse(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
        return std::nullopt;
    } catch (CLI::ParseError const& error) {
        if (app.get_subcommands().empty() && !app.remaining().empty()) {
            std::cerr << "velum: There is no command ("
                      << velum::report::inOneLine(app.remaining().front())
                      << "); \"velum --help\" lists them.\n";
            return ExitCode::wrongUsage;
        }
        if (app.exit(error) != 0) {
            return ExitCode::wrongUsage;
        }
        return velum::commands::print("") ? ExitCode::done : ExitCode::failed; // what --help wrote
    }
}

/// What the program says of itself.
void setUp(CLI::App& app) {
    app.set_version_flag("--version", std::string("velum ") + velum_types_version);
    app.require_subcommand(1);
    app.footer("Exit codes: 0 done; 1 the input is at fault, releases differ or nothing was found; "
               "2 wrong usage; 3 the output or the program failed.");
}

int run(int argc, char** argv) {
    CLI::App app("Holds automotive data types in a model and shows them.", "velum");
    setUp(app);
    velum::commands::ImportCommand import;
    velum::commands::ShowCommand show;
    velum::commands::CheckCommand check;
    velum::commands::DiffCommand diff;
    velum::commands::FindCommand find;
    velum::commands::ExportCommand exporting;
    velum::commands::MergeCommand merge;
    velum::commands::RenameCommand rename;
    velum::commands::ReportCommand reporting;
    velum::commands::SqlCommand sql;
    velum::commands::ClassesCommand classes;
    velum::commands::DescribeCommand describe;
    velum::commands::CompletionCommand completion;
    velum::commands::ManualCommand manual;
    const std::pair<char const*, std::function<int()>> commands[] = {
        {"import", [&] { return import.run(); }},
        {"show", [&] { return show.run(); }},
        {"check", [&] { return check.run(); }},
        {"diff", [&] { return diff.run(); }},
        {"find", [&] { return find.run(); }},
        {"export", [&] { return exporting.run(); }},
        {"merge", [&] { return merge.run(); }},
        {"rename", [&] { return rename.run(); }},
        {"report", [&] { return reporting.run(); }},
        {"sql", [&] { return sql.run(); }},
        {"classes", [&] { return classes.run(); }},
        {"describe", [&] { return describe.run(); }},
        {"completion", [&] { return completion.run(); }},
        {"manual", [&] { return manual.run(); }}};
    import.addTo(app);
    show.addTo(app);
    check.addTo(app);
    diff.addTo(app);
    find.addTo(app);
    exporting.addTo(app);
    merge.addTo(app);
    rename.addTo(app);
    reporting.addTo(app);
    sql.addTo(app);
    classes.addTo(app);
    describe.addTo(app);
    completion.addTo(app);
    manual.addTo(app);

    if (auto const code = parse(app, argc, argv)) {
        return *code;
    }
    for (auto const& [name, runs] : commands) {
        if (app.got_subcommand(name)) {
            return runs();
        }
    }
    return ExitCode::wrongUsage; // not reached: a command is required
}

int tell(std::exception const& error, ExitCode code) {
    std::cerr << "velum: " << velum::report::inOneLine(error.what()) << "\n";
    return code;
}

/// Ends the program where memory runs out: going back through what is half done could need more.
[[noreturn]] void endWithoutMemory() {
    constexpr std::string_view line =
        "velum: The memory is used up. Read fewer files at a time, or allow more memory.\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, line.data(), line.size());
    std::_Exit(ExitCode::failed);
}

} // namespace

int main(int argc, char** argv) {
    std::set_new_handler(endWithoutMemory);
    try {
        return run(argc, argv);
    } catch (velum::arxml::InputError const& error) {
        return tell(error, ExitCode::inputAtFault);
    } catch (QOB::StoreError const& error) {
        return tell(error, ExitCode::inputAtFault);
    } catch (std::bad_alloc const&) {
        endWithoutMemory();
    } catch (std::exception const& error) {
        return tell(error, ExitCode::failed);
    }
}
