#include "commands/sql_command.h"

#include "commands/exit_code.h"
#include "commands/output.h"
#include "sql/printers.h"

#include <qob_store/query.h>
#include <utility>

namespace velum::commands {

void SqlCommand::addTo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "sql", "Run an SQL query of a store, which is only read, and print the rows");
    command->add_option("FILE", file_, "The store to read (.velum)")->required();
    command->add_option("QUERY", query_, "One statement that reads, such as SELECT")->required();
    CLI::Option* const json =
        command->add_flag("--json", isJson_, "Print an array with an object for each row");
    command->add_flag("--csv", isCsv_, "Print comma-separated values with a row of titles")
        ->excludes(json);
}

int SqlCommand::run() const {
    QOB::StoreQuery rows(file_, query_);
    constexpr std::size_t enough = 1U << 16U;
    std::string pending;
    auto const sink = [&pending](std::string_view piece) {
        pending += piece;
        return pending.size() < enough || print(std::exchange(pending, {}));
    };
    bool const isPrinted = isJson_  ? sql::printJson(rows, sink)
                           : isCsv_ ? sql::printCsv(rows, sink)
                                    : sql::printTable(rows, sink);
    return isPrinted && print(pending) ? done : failed;
}

} // namespace velum::commands
