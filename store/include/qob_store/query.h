#pragma once

#include "qob_store/export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace QOB {

/// A cell of a result: nothing, a whole number, a number, or a text.
using StoreValue = std::variant<std::monostate, std::int64_t, double, std::string_view>;

/// The rows of one SQL query of a store. The query may only read: a statement that would change the
/// file or open another one is refused. Failures raise StoreError.
class QOB_STORE_EXPORT StoreQuery {
public:
    StoreQuery(std::string const& path, std::string const& sql);
    StoreQuery(StoreQuery const&) = delete;
    StoreQuery& operator=(StoreQuery const&) = delete;
    ~StoreQuery();

    /// The titles of the columns; two may be the same.
    std::vector<std::string> const& columns() const noexcept;
    /// Goes to the first row, then to the next one; false after the last.
    bool next();
    /// Of the current row. A text is valid until the next one.
    StoreValue value(std::size_t column) const;

private:
    class Rows;
    std::unique_ptr<Rows> rows_;
};

} // namespace QOB
