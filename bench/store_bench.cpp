// Models in files. Beside a save stands SQLite writing the same rows into the same tables with
// nothing around it; beside a load, SQLite reading them and the creation of the same objects. The
// second baseline are plain objects as XML, written and read by code made for them.
//
//     store_bench                    the rows
//     store_bench --memory COUNT     bytes per object of a model, and the most while loading it

#include "qob_store/store.h"
#include "support/comparison.h"
#include "support/plaintypes.h"
#include "support/sqlite.h"
#include "velum_types/types.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using bare::Connection;
using bare::fileFor;
using bare::require;
using benchmark::State;
namespace types = Zorvane::metamodel::types;

/// Integers with names, bounds, a unit and one method for each hundred.
QOB::Model makeModel(std::int64_t count) {
    QOB::Model model = types::NSInterface::FactoryIntf::createNewModel();
    auto const unit = types::Unit::create(model, "metre");
    types::CompuMethod method;
    for (std::int64_t i = 0; i < count; ++i) {
        if (i % 100 == 0) {
            method = types::CompuMethod::create(model);
        }
        auto const type = types::Integer::create(model, "type" + std::to_string(i));
        type.setMinValue(0.0);
        type.setMaxValue(static_cast<double>(i) + 0.5);
        type.setUnit(unit);
        type.setCompuMethod(method);
    }
    return model;
}

/// A store of such a model.
std::string storeOf(std::int64_t count) {
    std::string path = fileFor("store_bench.velum");
    std::filesystem::remove(path);
    QOB::Model const model = makeModel(count);
    QOB::Store::save(model, path);
    model.destroy();
    return path;
}

// Bare SQLite ----------------------------------------------------------------------------------

/// A table with its rows in memory: each cell is a byte for its type, then its value.
struct Table {
    std::string definition;
    std::string insertion;
    std::string query;
    int columns = 0;
    std::string cells{};
};

template <class Value>
void append(std::string& cells, Value value) {
    cells.append(reinterpret_cast<char const*>(&value), sizeof value);
}
template <class Value>
Value take(char const*& cell) {
    Value value;
    std::memcpy(&value, cell, sizeof value);
    cell += sizeof value;
    return value;
}

void keepCell(sqlite3_stmt* row, int column, std::string& cells) {
    auto const type = static_cast<char>(sqlite3_column_type(row, column));
    cells += type;
    if (type == SQLITE_INTEGER) {
        append(cells, sqlite3_column_int64(row, column));
    } else if (type == SQLITE_FLOAT) {
        append(cells, sqlite3_column_double(row, column));
    } else if (type == SQLITE_TEXT) {
        int const size = sqlite3_column_bytes(row, column);
        append(cells, size);
        cells.append(reinterpret_cast<char const*>(sqlite3_column_text(row, column)),
                     static_cast<std::size_t>(size));
    }
}

void bindCell(sqlite3_stmt* row, int column, char const*& cell) {
    char const type = *cell++;
    if (type == SQLITE_INTEGER) {
        sqlite3_bind_int64(row, column, take<sqlite3_int64>(cell));
    } else if (type == SQLITE_FLOAT) {
        sqlite3_bind_double(row, column, take<double>(cell));
    } else if (type == SQLITE_TEXT) {
        int const size = take<int>(cell);
        sqlite3_bind_text(row, column, cell, size, SQLITE_STATIC);
        cell += size;
    } else {
        sqlite3_bind_null(row, column);
    }
}

std::vector<Table> tablesOf(std::string const& path, bool withRows) {
    Connection connection(path);
    std::vector<Table> tables;
    sqlite3_stmt* const names = connection.prepare(
        "SELECT name, sql FROM sqlite_master WHERE type = 'table' ORDER BY rowid");
    while (sqlite3_step(names) == SQLITE_ROW) {
        std::string const name =
            std::string("\"") + reinterpret_cast<char const*>(sqlite3_column_text(names, 0)) + '"';
        Table table{.definition = reinterpret_cast<char const*>(sqlite3_column_text(names, 1)),
                    .insertion = "INSERT INTO " + name + " VALUES(?",
                    .query = "SELECT * FROM " + name};
        sqlite3_stmt* const rows = connection.prepare(table.query);
        table.columns = sqlite3_column_count(rows);
        while (withRows && sqlite3_step(rows) == SQLITE_ROW) {
            for (int i = 0; i < table.columns; ++i) {
                keepCell(rows, i, table.cells);
            }
        }
        sqlite3_finalize(rows);
        for (int i = 1; i < table.columns; ++i) {
            table.insertion += ", ?";
        }
        table.insertion += ")";
        tables.push_back(std::move(table));
    }
    sqlite3_finalize(names);
    return tables;
}

void writeTables(std::vector<Table> const& tables, std::string const& path) {
    Connection connection(path);
    connection.run("BEGIN");
    for (Table const& table : tables) {
        connection.run(table.definition);
    }
    for (Table const& table : tables) {
        sqlite3_stmt* const row = connection.prepare(table.insertion);
        char const* cell = table.cells.data();
        while (cell != table.cells.data() + table.cells.size()) {
            for (int column = 1; column <= table.columns; ++column) {
                bindCell(row, column, cell);
            }
            require(sqlite3_step(row) == SQLITE_DONE);
            sqlite3_reset(row);
        }
        sqlite3_finalize(row);
    }
    connection.run("COMMIT");
}

void readTables(std::vector<Table> const& tables, std::string const& path) {
    Connection connection(path);
    std::string cells;
    for (Table const& table : tables) {
        sqlite3_stmt* const rows = connection.prepare(table.query);
        while (sqlite3_step(rows) == SQLITE_ROW) {
            cells.clear();
            for (int i = 0; i < table.columns; ++i) {
                keepCell(rows, i, cells);
            }
            benchmark::DoNotOptimize(cells.data());
        }
        sqlite3_finalize(rows);
    }
}

// Plain objects as XML -------------------------------------------------------------------------

struct PlainModel {
    std::vector<plain::TypeHandle> types{};
    std::vector<plain::Method> methods{};
};

PlainModel makePlain(std::int64_t count) {
    PlainModel model;
    model.methods.resize(static_cast<std::size_t>(count / 100 + 1));
    for (std::int64_t i = 0; i < count; ++i) {
        plain::TypeHandle type = plain::makeType("type" + std::to_string(i));
        type->state.maximum = static_cast<double>(i) + 0.5;
        plain::setMethod(type, &model.methods[static_cast<std::size_t>(i / 100)]);
        model.types.push_back(std::move(type));
    }
    return model;
}

void writeXml(PlainModel const& model, std::string const& path) {
    std::FILE* const file = std::fopen(path.c_str(), "w");
    require(file != nullptr);
    std::fprintf(file, "<types>\n");
    for (plain::TypeHandle const& type : model.types) {
        plain::TypeState const& state = type->state;
        std::fprintf(file,
                     "<type name=\"%s\" length=\"%d\" min=\"%.17g\" max=\"%.17g\" signed=\"%d\" "
                     "method=\"%td\"/>\n",
                     state.name.c_str(),
                     state.length,
                     state.minimum,
                     state.maximum,
                     static_cast<int>(state.isSigned),
                     state.method - model.methods.data());
    }
    std::fprintf(file, "</types>\n");
    std::fclose(file);
}

/// The value of the attribute that comes next.
std::string_view attribute(char const*& at) {
    char const* const first = std::strchr(at, '"') + 1;
    at = std::strchr(first, '"') + 1;
    return {first, static_cast<std::size_t>(at - 1 - first)};
}
template <class Number>
Number numberOf(std::string_view text) {
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

PlainModel readXml(std::string const& path, std::int64_t count) {
    std::ifstream file(path);
    PlainModel model;
    model.methods.resize(static_cast<std::size_t>(count / 100 + 1));
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("<type ")) {
            continue;
        }
        char const* at = line.c_str();
        plain::TypeHandle type = plain::makeType(std::string(attribute(at)));
        type->state.length = numberOf<int>(attribute(at));
        type->state.minimum = numberOf<double>(attribute(at));
        type->state.maximum = numberOf<double>(attribute(at));
        type->setSigned(attribute(at) == "1");
        plain::setMethod(type, &model.methods[numberOf<std::size_t>(attribute(at))]);
        model.types.push_back(std::move(type));
    }
    return model;
}

// Rows -----------------------------------------------------------------------------------------

void save(State& state, std::int64_t count) {
    QOB::Model const model = makeModel(count);
    std::string const path = fileFor("store_bench.velum");
    while (state.KeepRunningBatch(count)) {
        state.PauseTiming();
        std::filesystem::remove(path);
        state.ResumeTiming();
        QOB::Store::save(model, path);
    }
    model.destroy();
    std::filesystem::remove(path);
}
void saveBare(State& state, std::int64_t count) {
    std::vector<Table> const tables = tablesOf(storeOf(count), true);
    std::string const bare = fileFor("store_bench.db");
    while (state.KeepRunningBatch(count)) {
        state.PauseTiming();
        std::filesystem::remove(bare);
        state.ResumeTiming();
        writeTables(tables, bare);
    }
    std::filesystem::remove(bare);
}
void saveXml(State& state, std::int64_t count) {
    PlainModel const model = makePlain(count);
    std::string const path = fileFor("store_bench.xml");
    while (state.KeepRunningBatch(count)) {
        writeXml(model, path);
    }
    std::filesystem::remove(path);
}

void load(State& state, std::int64_t count) {
    std::string const path = storeOf(count);
    while (state.KeepRunningBatch(count)) {
        QOB::Model const loaded = QOB::Store::load(path);
        state.PauseTiming();
        loaded.destroy();
        state.ResumeTiming();
    }
    std::filesystem::remove(path);
}
void loadBare(State& state, std::int64_t count) {
    std::string const path = storeOf(count);
    std::vector<Table> const tables = tablesOf(path, false);
    while (state.KeepRunningBatch(count)) {
        readTables(tables, path);
        QOB::Model const made = makeModel(count);
        state.PauseTiming();
        made.destroy();
        state.ResumeTiming();
    }
    std::filesystem::remove(path);
}
void loadXml(State& state, std::int64_t count) {
    std::string const path = fileFor("store_bench.xml");
    writeXml(makePlain(count), path);
    while (state.KeepRunningBatch(count)) {
        PlainModel loaded = readXml(path, count);
        state.PauseTiming();
        loaded = {};
        state.ResumeTiming();
    }
    std::filesystem::remove(path);
}

// Memory ---------------------------------------------------------------------------------------

/// A figure of this process in bytes, such as "VmHWM", the most that it has ever had.
double statusOf(std::string_view name) {
    std::ifstream file("/proc/self/status");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(name)) {
            return std::strtod(line.c_str() + name.size() + 1, nullptr) * 1024;
        }
    }
    return 0;
}

/// What a process of its own needs most for the work.
double mostMemoryOf(std::function<void()> const& work) {
    int ends[2];
    require(pipe(ends) == 0);
    pid_t const child = fork();
    require(child >= 0);
    if (child == 0) {
        double const before = statusOf("VmRSS:");
        work();
        double const most = statusOf("VmHWM:") - before;
        _exit(write(ends[1], &most, sizeof most) == sizeof most ? 0 : 1);
    }
    close(ends[1]);
    double most = 0;
    require(read(ends[0], &most, sizeof most) == sizeof most);
    waitpid(child, nullptr, 0);
    close(ends[0]);
    return most;
}

int measureMemory(std::int64_t count) {
    std::string const path = fileFor("store_bench.velum");
    mostMemoryOf([&] { storeOf(count); });
    auto const perObject = 1.0 / static_cast<double>(count);
    double const made = mostMemoryOf([&] { makeModel(count); }) * perObject;
    double const loaded = mostMemoryOf([&] { QOB::Store::load(path); }) * perObject;
    double const saved =
        mostMemoryOf([&] { QOB::Store::save(makeModel(count), path); }) * perObject;
    std::printf("%lld objects: %.0f bytes each; at most %.0f while loading (%.2fx), "
                "%.0f while saving (%.2fx); %.0f in the file\n",
                static_cast<long long>(count),
                made,
                loaded,
                loaded / made,
                saved,
                saved / made,
                static_cast<double>(std::filesystem::file_size(path)) * perObject);
    std::filesystem::remove(path);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    types::initialize();
    if (argc == 3 && std::string_view(argv[1]) == "--memory") {
        return measureMemory(std::strtoll(argv[2], nullptr, 10));
    }
    std::vector<std::int64_t> const counts{10'000, 1'000'000};
    comparison::add("store: save, objects", save, saveBare, 1.5, counts);
    comparison::add("store: load, objects", load, loadBare, 1.5, counts);
    comparison::add("store: save beside plain XML, objects", save, saveXml, 0, counts);
    comparison::add("store: load beside plain XML, objects", load, loadXml, 0, counts);
    return comparison::run(argc, argv);
}
