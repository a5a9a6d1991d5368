#include "writing/array_size.h"

#include <algorithm>
#include <string>

namespace velum::arxml {

namespace {

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// A size that is computed from system constants: every word in it is one.
void writeFormula(ElementOutput const& out, std::string_view tag, std::string_view formula) {
    out.xml.beginMixed(tag);
    while (!formula.empty()) {
        std::size_t end = 0;
        while (end < formula.size() && isWordCharacter(formula[end])) {
            ++end;
        }
        const bool isName = end > 0 && (formula.front() < '0' || formula.front() > '9');
        if (isName) {
            out.xml.inlineLeaf("SYSC-REF", "DEST", "SW-SYSTEMCONST", formula.substr(0, end));
        } else {
            end = std::max<std::size_t>(end, 1);
            out.xml.text(formula.substr(0, end));
        }
        formula.remove_prefix(end);
    }
    out.xml.endMixed(tag);
    out.noPlace("The path of a system constant is unknown; a size refers to it by its name.");
}

} // namespace

void writeSize(ElementOutput const& out,
               std::string_view tag,
               types::Matrix const& matrix,
               std::size_t place) {
    std::size_t zeros = 0;
    std::size_t at = 0;
    QOB::Integer size;
    for (const QOB::Integer number : matrix.getDimensionses()) {
        if (at == place) {
            size = number;
            break;
        }
        zeros += number == 0 ? 1 : 0;
        ++at;
    }
    if (!size.isValid()) {
        out.noPlace("A size of the array is no number; it isn't written.");
        return;
    }
    std::string formula;
    std::size_t formulas = 0;
    if (size == 0) {
        for (const QOB::String text : matrix.getSymbolicDimensionses()) {
            if (formulas++ <= zeros) {
                formula = std::string(text);
            }
        }
    }
    if (formula.empty()) {
        out.xml.leaf(tag, std::to_string(static_cast<int>(size)));
    } else {
        writeFormula(out, tag, formula);
    }
}

} // namespace velum::arxml
