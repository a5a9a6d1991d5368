#include "sql/printers.h"

#include "report/csv.h"
#include "report/printers.h"
#include "report/table.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <variant>
#include <vector>
#include <velum_arxml/notation/number.h>

namespace velum::sql {

namespace {

using Json = nlohmann::ordered_json;
using QOB::StoreValue;

/// Empty for a value that isn't there.
std::string textOf(StoreValue const& value) {
    if (auto const* const number = std::get_if<std::int64_t>(&value)) {
        return std::to_string(*number);
    }
    if (auto const* const number = std::get_if<double>(&value)) {
        return arxml::numberText(*number);
    }
    auto const* const text = std::get_if<std::string_view>(&value);
    return text != nullptr ? std::string(*text) : std::string();
}

Json jsonOf(StoreValue const& value) {
    if (std::holds_alternative<std::monostate>(value)) {
        return nullptr;
    }
    if (auto const* const number = std::get_if<std::int64_t>(&value)) {
        return *number;
    }
    auto const* const number = std::get_if<double>(&value);
    return number != nullptr && std::isfinite(*number) ? Json(*number) : Json(textOf(value));
}

/// Each once.
std::vector<std::string> keysOf(std::vector<std::string> const& titles) {
    std::vector<std::string> keys;
    for (std::string const& title : titles) {
        std::string key = title;
        for (int i = 2; std::find(keys.begin(), keys.end(), key) != keys.end(); ++i) {
            key = title + ":" + std::to_string(i);
        }
        keys.push_back(std::move(key));
    }
    return keys;
}

} // namespace

bool printTable(QOB::StoreQuery& rows, Sink const& sink) {
    using report::Table;
    std::size_t const count = rows.columns().size();
    std::vector<bool> areNumbers(count, true);
    std::vector<std::vector<std::string>> cells;
    while (rows.next()) {
        std::vector<std::string>& row = cells.emplace_back();
        for (std::size_t i = 0; i < count; ++i) {
            StoreValue const value = rows.value(i);
            areNumbers[i] = areNumbers[i] && !std::holds_alternative<std::string_view>(value);
            row.push_back(report::inOneLine(textOf(value)));
        }
    }
    std::vector<Table::Column> columns;
    for (std::size_t i = 0; i < count; ++i) {
        columns.push_back({report::inOneLine(rows.columns()[i]),
                           areNumbers[i] ? Table::Align::right : Table::Align::left});
    }
    Table table(std::move(columns));
    for (auto& row : cells) {
        table.addRow(std::move(row));
    }
    return sink(table.text());
}

bool printJson(QOB::StoreQuery& rows, Sink const& sink) {
    std::vector<std::string> const keys = keysOf(rows.columns());
    std::string piece = "[";
    for (bool isFirst = true; rows.next(); isFirst = false) {
        Json row = Json::object();
        for (std::size_t i = 0; i < keys.size(); ++i) {
            row[keys[i]] = jsonOf(rows.value(i));
        }
        piece += isFirst ? "\n" : ",\n";
        // A text need not be UTF-8; what is not becomes U+FFFD.
        piece += row.dump(-1, ' ', false, Json::error_handler_t::replace);
        if (!sink(piece)) {
            return false;
        }
        piece.clear();
    }
    return sink(piece + (piece.empty() ? "\n]\n" : "]\n"));
}

bool printCsv(QOB::StoreQuery& rows, Sink const& sink) {
    std::string piece;
    for (std::string const& title : rows.columns()) {
        piece += (piece.empty() ? "" : ",") + report::csvCell(title);
    }
    piece += report::endOfCsvRow;
    while (sink(piece)) {
        if (!rows.next()) {
            return true;
        }
        piece.clear();
        for (std::size_t i = 0; i < rows.columns().size(); ++i) {
            StoreValue const value = rows.value(i);
            piece += i == 0 ? "" : ",";
            piece += std::holds_alternative<std::monostate>(value) ? std::string()
                                                                   : report::csvCell(textOf(value));
        }
        piece += report::endOfCsvRow;
    }
    return false;
}

} // namespace velum::sql
