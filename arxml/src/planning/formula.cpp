#include "planning/formula.h"

#include "source/white_space.h"

namespace velum::arxml {

namespace {

/// Adds a text with each run of blanks as one space.
void addWords(std::string& words, std::string_view text) {
    for (const char c : text) {
        if (!isWhiteSpace(c)) {
            words += c;
        } else if (!words.empty() && words.back() != ' ') {
            words += ' ';
        }
    }
}

} // namespace

std::string Formula::description() const {
    return std::string(isConstant ? "the system constant (" : "the formula (") + text + ")";
}

std::optional<Formula> formulaOf(Element number) {
    const std::string_view written = number.text();
    Formula formula;
    std::size_t begin = 0;
    for (const Element constant : number.children()) {
        if (!constant.is(element::syscRef)) {
            continue;
        }
        const std::size_t end = constant.placeInText();
        addWords(formula.text, written.substr(begin, end - begin));
        begin = end;
        std::string_view name = constant.text();
        name.remove_prefix(name.rfind('/') + 1);
        formula.text += name;
        formula.constants.push_back(constant);
    }
    if (formula.constants.empty()) {
        return std::nullopt;
    }
    addWords(formula.text, written.substr(begin));
    formula.text.erase(formula.text.find_last_not_of(' ') + 1);
    formula.isConstant = formula.constants.size() == 1 && isBlank(written);
    return formula;
}

} // namespace velum::arxml
