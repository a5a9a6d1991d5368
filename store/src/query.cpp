#include "qob_store/query.h"

#include "database.h"
#include "schema.h"

#include <algorithm>
#include <array>
#include <sqlite3.h>

namespace QOB {

using store::Database;
using store::Statement;

namespace {

/// What may be asked for with an argument, such as the name of a table.
constexpr std::array<std::string_view, 10> questions = {"foreign_key_check",
                                                        "foreign_key_list",
                                                        "index_info",
                                                        "index_list",
                                                        "index_xinfo",
                                                        "integrity_check",
                                                        "quick_check",
                                                        "table_info",
                                                        "table_list",
                                                        "table_xinfo"};
/// What is set with an argument, and told without one.
constexpr std::array<std::string_view, 7> settings = {"application_id",
                                                      "encoding",
                                                      "foreign_keys",
                                                      "page_count",
                                                      "page_size",
                                                      "schema_version",
                                                      "user_version"};

template <std::size_t Count>
bool isAmong(std::array<std::string_view, Count> const& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Asked by SQLite for everything that a statement is about to do.
int allowReading(void*,
                 int action,
                 char const* first,
                 char const* second,
                 char const*,
                 char const*) {
    switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_FUNCTION:
    case SQLITE_RECURSIVE:
        return SQLITE_OK;
    case SQLITE_UPDATE: // asked for table functions too; one that writes is found afterwards
        return std::string_view("sqlite_master") == first ? SQLITE_OK : SQLITE_DENY;
    case SQLITE_PRAGMA:
        return isAmong(questions, first) || (second == nullptr && isAmong(settings, first))
                   ? SQLITE_OK
                   : SQLITE_DENY;
    default:
        return SQLITE_DENY;
    }
}

/// Raises unless the text is one statement, and one that only reads.
void requireOneReading(Database& database, std::string const& sql) {
    int count = 0;
    for (char const* rest = sql.c_str(); *rest != '\0';) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database.handle(), rest, -1, &statement, &rest) != SQLITE_OK) {
            database.failLast();
        }
        bool const isReading = sqlite3_stmt_readonly(statement) != 0;
        count += statement != nullptr ? 1 : 0; // none in blanks and comments
        sqlite3_finalize(statement);
        if (!isReading) {
            database.fail(store::OnlyReading);
        }
    }
    if (count != 1) {
        database.fail(count == 0 ? "there is no statement" : "there is more than one statement");
    }
}

} // namespace

class StoreQuery::Rows {
public:
    Rows(std::string const& path, std::string const& sql) : database_(path, Database::Use::Query) {
        if (!store::isStore(database_)) {
            database_.fail("the file is empty");
        }
        sqlite3_set_authorizer(database_.handle(), allowReading, nullptr);
        requireOneReading(database_, sql);
        statement_ = Statement(database_, sql);
        columns_ = statement_.columns();
    }

    std::vector<std::string> const& columns() const noexcept { return columns_; }

    bool next() {
        isAtEnd_ = isAtEnd_ || !statement_.step();
        return !isAtEnd_;
    }

    StoreValue value(int column) const {
        if (statement_.isNull(column)) {
            return std::monostate();
        }
        if (statement_.isInteger(column)) {
            return statement_.integer(column);
        }
        if (statement_.isReal(column)) {
            return statement_.real(column);
        }
        return statement_.text(column);
    }

private:
    Database database_;
    Statement statement_;
    std::vector<std::string> columns_;
    bool isAtEnd_ = false;
};

StoreQuery::StoreQuery(std::string const& path, std::string const& sql)
    : rows_(std::make_unique<Rows>(path, sql)) {
}
StoreQuery::~StoreQuery() = default;

std::vector<std::string> const& StoreQuery::columns() const noexcept {
    return rows_->columns();
}
bool StoreQuery::next() {
    return rows_->next();
}
StoreValue StoreQuery::value(std::size_t column) const {
    return rows_->value(static_cast<int>(column));
}

} // namespace QOB
