#include "report/table.h"

#include <algorithm>

namespace velum::report {

std::size_t widthOf(std::string_view text) {
    // Every byte of UTF-8 but those that continue a character.
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

std::string Table::text() const {
    std::vector<std::string> titles;
    std::vector<std::size_t> widths;
    for (Column const& column : columns_) {
        titles.push_back(column.title);
        widths.push_back(widthOf(column.title));
    }
    for (auto const& row : rows_) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], widthOf(row[i]));
        }
    }

    std::string text;
    const auto addLine = [&](std::vector<std::string> const& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string space(widths[i] - widthOf(cells[i]), ' ');
            const bool isRight = columns_[i].align == Align::right;
            text += i == 0 ? "" : "  ";
            text += isRight ? space + cells[i] : cells[i] + space;
        }
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    };
    addLine(titles);
    for (auto const& row : rows_) {
        addLine(row);
    }
    return text;
}

} // namespace velum::report
