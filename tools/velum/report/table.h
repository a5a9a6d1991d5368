#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velum::report {

/// How many columns a text takes: its characters, not its bytes.
std::size_t widthOf(std::string_view text);

/// Columns of text, each as wide as its widest cell.
class Table {
public:
    enum class Align { left, right };
    struct Column {
        std::string title;
        Align align = Align::left;
    };

    explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

    /// One cell for each column.
    void addRow(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

    bool empty() const { return rows_.empty(); }

    /// The titles, then the rows; each line ends in a line feed and in no space.
    std::string text() const;

private:
    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace velum::report
