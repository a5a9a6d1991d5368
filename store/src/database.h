#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace QOB::store {

/// Appends a name as SQL quotes it.
std::string sqlName(std::string_view name);

/// Why a statement is refused where nothing may be changed.
inline constexpr char OnlyReading[] = "only statements that read are run, such as SELECT";

class Database;

/// A prepared statement. Parameters and columns count from 0.
class Statement {
public:
    Statement() = default;
    Statement(Database& database, std::string const& sql);

    void bind(int parameter, std::int64_t value);
    void bind(int parameter, double value);
    /// The text must live until the statement has run.
    void bind(int parameter, std::string_view text);
    void bindNull(int parameter);

    /// Goes to the next row; false at the end, where the statement is ready to run again.
    bool step();
    /// Runs a statement that gives no rows.
    void run() { step(); }

    bool isNull(int column) const;
    bool isInteger(int column) const;
    bool isReal(int column) const;
    bool isText(int column) const;
    std::int64_t integer(int column) const;
    double real(int column) const;
    /// Valid until the next step.
    std::string_view text(int column) const;
    /// Their titles.
    std::vector<std::string> columns() const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };

    Database* database_ = nullptr;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/// An open file. Every failure raises StoreError with the file and the cause in one line.
class Database {
public:
    enum class Use { Read, Write, Query };

    Database(std::string path, Use use);
    /// The same open file for another use; no statement of it may be left.
    Database(Database&& other, Use use) noexcept;
    Database(Database const&) = delete;
    Database& operator=(Database const&) = delete;
    ~Database() = default;

    std::string const& path() const noexcept { return path_; }
    sqlite3* handle() const noexcept { return database_.get(); }

    void run(std::string const& sql);
    /// The number that a query gives in its first column.
    std::int64_t number(std::string const& sql);

    /// Raises with the cause of the last failure.
    [[noreturn]] void failLast() const;
    [[noreturn]] void fail(std::string const& cause) const;

private:
    struct Close {
        void operator()(sqlite3* database) const noexcept;
    };

    std::string path_;
    Use use_;
    std::unique_ptr<sqlite3, Close> database_;
};

/// A transaction in a file, for writing or for a look at one state of it; rolled back unless it is
/// committed.
class FileTransaction {
public:
    FileTransaction(Database& database, Database::Use use);
    FileTransaction(FileTransaction const&) = delete;
    FileTransaction& operator=(FileTransaction const&) = delete;
    ~FileTransaction();

    void commit();

private:
    Database& database_;
    bool isOpen_ = true;
};

} // namespace QOB::store
