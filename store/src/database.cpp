#include "database.h"

#include "qob_store/store.h"

#include <filesystem>
#include <sqlite3.h>
#include <system_error>
#include <utility>

namespace QOB {

StoreError::StoreError(std::string const& message) : Exception(message) {
}
StoreError::StoreError(StoreError const&) = default;
StoreError& StoreError::operator=(StoreError const&) = default;
StoreError::~StoreError() noexcept = default;

StoreError::clone_base const* StoreError::clone() const {
    return new StoreError(*this);
}
void StoreError::rethrow() const {
    throw StoreError(*this);
}

namespace store {

namespace {

/// How long a file that another program writes is waited for.
constexpr int busyMilliseconds = 1000;

/// In the words of a person who has only the file.
char const* causeOf(int extendedCode) {
    switch (extendedCode & 0xFF) {
    case SQLITE_FULL:
        return "the disk is full";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "another program is writing it";
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return "the file or its folder can't be written";
    case SQLITE_CANTOPEN:
        return "the file can't be opened";
    case SQLITE_NOTADB:
        return "the file is no store";
    case SQLITE_CORRUPT:
        return "the file is damaged";
    case SQLITE_AUTH:
        return OnlyReading;
    case SQLITE_IOERR:
        return extendedCode == SQLITE_IOERR_WRITE || extendedCode == SQLITE_IOERR_FSYNC
                   ? "a write to the disk failed; the disk may be full"
                   : "the disk reports an error";
    default:
        return nullptr;
    }
}

/// The name as it is given to SQLite, to which an empty one and some others mean no file.
std::string fileName(std::string const& path) {
    return std::filesystem::path(path).is_absolute() ? path : "./" + path;
}

char const* failureOf(Database::Use use) {
    switch (use) {
    case Database::Use::Write:
        return "Cannot write";
    case Database::Use::Query:
        return "Cannot query";
    default:
        return "Cannot read";
    }
}

} // namespace

std::string sqlName(std::string_view name) {
    std::string text = "\"";
    for (char const c : name) {
        text += c;
        if (c == '"') {
            text += '"';
        }
    }
    return text += '"';
}

// Statement ------------------------------------------------------------------------------------

void Statement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

Statement::Statement(Database& database, std::string const& sql) : database_(&database) {
    sqlite3_stmt* statement = nullptr;
    int const code = sqlite3_prepare_v3(database.handle(),
                                        sql.data(),
                                        static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT,
                                        &statement,
                                        nullptr);
    statement_.reset(statement);
    if (code != SQLITE_OK || statement == nullptr) {
        database.failLast();
    }
}

void Statement::bind(int parameter, std::int64_t value) {
    sqlite3_bind_int64(statement_.get(), parameter + 1, value);
}
void Statement::bind(int parameter, double value) {
    sqlite3_bind_double(statement_.get(), parameter + 1, value);
}
void Statement::bind(int parameter, std::string_view text) {
    // A view of an empty text may have no address, which would bind a null.
    if (sqlite3_bind_text64(statement_.get(),
                            parameter + 1,
                            text.data() != nullptr ? text.data() : "",
                            text.size(),
                            SQLITE_STATIC,
                            SQLITE_UTF8) != SQLITE_OK) {
        database_->failLast();
    }
}
void Statement::bindNull(int parameter) {
    sqlite3_bind_null(statement_.get(), parameter + 1);
}

bool Statement::step() {
    int const code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        sqlite3_reset(statement_.get());
        database_->failLast();
    }
    sqlite3_reset(statement_.get());
    return false;
}

bool Statement::isNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}
bool Statement::isInteger(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_INTEGER;
}
bool Statement::isReal(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_FLOAT;
}
bool Statement::isText(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_TEXT;
}
std::int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}
double Statement::real(int column) const {
    return sqlite3_column_double(statement_.get(), column);
}
std::string_view Statement::text(int column) const {
    auto const* const text =
        reinterpret_cast<char const*>(sqlite3_column_text(statement_.get(), column));
    int const size = sqlite3_column_bytes(statement_.get(), column);
    return text != nullptr ? std::string_view(text, static_cast<std::size_t>(size))
                           : std::string_view();
}

std::vector<std::string> Statement::columns() const {
    std::vector<std::string> titles;
    for (int i = 0, count = sqlite3_column_count(statement_.get()); i < count; ++i) {
        char const* const title = sqlite3_column_name(statement_.get(), i);
        titles.emplace_back(title != nullptr ? title : "");
    }
    return titles;
}

// Database -------------------------------------------------------------------------------------

void Database::Close::operator()(sqlite3* database) const noexcept {
    sqlite3_close(database);
}

Database::Database(std::string path, Use use) : path_(std::move(path)), use_(use) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path_, ignored)) {
        fail("it is a folder");
    }
    if (use != Use::Write && !std::filesystem::exists(path_, ignored)) {
        fail("there is no such file");
    }
    // Also to be read a file is opened for writing where it can be: what a program that died left
    // half written is taken back first.
    sqlite3* database = nullptr;
    // There is one thread, so no call has to lock.
    int const flags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (use == Use::Write ? SQLITE_OPEN_CREATE : 0);
    int const code = sqlite3_open_v2(fileName(path_).c_str(), &database, flags, nullptr);
    database_.reset(database);
    if (code != SQLITE_OK) {
        failLast();
    }
    sqlite3_extended_result_codes(database, 1);
    sqlite3_busy_timeout(database, busyMilliseconds);
    // Nothing that stands in a file from elsewhere is run.
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    run("PRAGMA cell_size_check = ON");
    run("PRAGMA foreign_keys = ON");
}

Database::Database(Database&& other, Use use) noexcept
    : path_(std::move(other.path_)), use_(use), database_(std::move(other.database_)) {
}

void Database::run(std::string const& sql) {
    if (sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        failLast();
    }
}

std::int64_t Database::number(std::string const& sql) {
    Statement query(*this, sql);
    return query.step() ? query.integer(0) : 0;
}

void Database::failLast() const {
    char const* const cause = causeOf(sqlite3_extended_errcode(database_.get()));
    fail(cause != nullptr ? cause : sqlite3_errmsg(database_.get()));
}

void Database::fail(std::string const& cause) const {
    throw StoreError(std::string(failureOf(use_)) + " the store " + path_ + ": " + cause + ".");
}

// FileTransaction ------------------------------------------------------------------------------

FileTransaction::FileTransaction(Database& database, Database::Use use) : database_(database) {
    database.run(use == Database::Use::Write ? "BEGIN IMMEDIATE" : "BEGIN");
}

FileTransaction::~FileTransaction() {
    if (isOpen_) {
        sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void FileTransaction::commit() {
    database_.run("COMMIT");
    isOpen_ = false;
}

} // namespace store
} // namespace QOB
