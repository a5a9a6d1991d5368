#pragma once

#include <filesystem>
#include <sqlite3.h>
#include <stdexcept>
#include <string>

/// SQLite with nothing around it: the baseline of stores.
namespace bare {

inline std::string fileFor(std::string const& name) {
    return (std::filesystem::temp_directory_path() / name).string();
}

inline void require(bool holds) {
    if (!holds) {
        throw std::runtime_error("a step of the baseline failed");
    }
}

class Connection {
public:
    explicit Connection(std::string const& path) {
        require(sqlite3_open(path.c_str(), &database_) == SQLITE_OK);
        run("PRAGMA foreign_keys = ON");
    }
    Connection(Connection const&) = delete;
    Connection& operator=(Connection const&) = delete;
    ~Connection() { sqlite3_close(database_); }

    void run(std::string const& sql) {
        require(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
    }
    sqlite3_stmt* prepare(std::string const& sql) {
        sqlite3_stmt* statement = nullptr;
        require(sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK);
        return statement;
    }

private:
    sqlite3* database_ = nullptr;
};

} // namespace bare
