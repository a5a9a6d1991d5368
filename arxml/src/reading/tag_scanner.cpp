#include "reading/tag_scanner.h"

#include <algorithm>
#include <utility>

namespace velum::arxml {

namespace {

/// The bytes EF BB BF at the start of a file take no column.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace

TagScanner::Refusal TagScanner::scan(std::string_view bytes) {
    std::size_t i = started_ ? 0 : skipByteOrderMark(bytes);
    while (i < bytes.size()) {
        if (state_ == State::text) {
            const std::size_t end = std::min(bytes.find('<', i), bytes.size());
            pieceSize_ += end - i;
            if (pieceSize_ > longestPiece) {
                return Refusal::longPiece;
            }
            advance(bytes.substr(i, end - i));
            i = end;
            if (i == bytes.size()) {
                break;
            }
        }
        if (const Refusal refusal = step(bytes[i]); refusal != Refusal::none) {
            return refusal;
        }
        advance(bytes.substr(i, 1));
        ++i;
    }
    return Refusal::none;
}

std::size_t TagScanner::skipByteOrderMark(std::string_view bytes) {
    std::size_t i = 0;
    while (i < bytes.size() && byteOrderMark_ < byteOrderMark.size() &&
           bytes[i] == byteOrderMark[byteOrderMark_]) {
        ++byteOrderMark_;
        ++i;
    }
    started_ = i < bytes.size();
    return i;
}

void TagScanner::advance(std::string_view bytes) {
    for (const char c : bytes) {
        if (c == '\n') {
            ++here_.line;
            here_.column = 1;
        } else if (!continuesCharacter(c)) {
            ++here_.column;
        }
    }
}

std::optional<Position> TagScanner::takeElement() {
    if (elements_.empty()) {
        return std::nullopt;
    }
    const Position place = elements_.front();
    elements_.pop_front();
    return place;
}

void TagScanner::beginMarkup() {
    pieceSize_ = 0;
    pieceBegin_ = here_;
    state_ = State::opened;
}

/// After the '>' at hand.
void TagScanner::beginText() {
    pieceSize_ = 0;
    pieceBegin_ = {here_.line, here_.column + 1};
    state_ = State::text;
}

// Each byte of a file passes here: the parts of step() are inlined into it.

inline void TagScanner::stepOpened(char c) {
    closing_ = 0;
    if (c == '/') {
        state_ = State::endTag;
    } else if (c == '?') {
        state_ = State::instruction;
    } else if (c == '!') {
        state_ = State::declaration;
    } else {
        elements_.push_back(pieceBegin_);
        attributes_ = 0;
        ++depth_;
        state_ = State::startTag;
    }
}

inline TagScanner::Refusal TagScanner::stepStartTag(char c) {
    if (c == '"') {
        state_ = State::doubleQuoted;
    } else if (c == '\'') {
        state_ = State::singleQuoted;
    } else if (c == '=' && ++attributes_ > mostAttributes) {
        return Refusal::manyAttributes;
    } else if (c == '>') {
        beginText();
        depth_ -= slash_ ? 1U : 0U;
    }
    slash_ = c == '/';
    return Refusal::none;
}

inline void TagScanner::stepEndTag(char c) {
    if (c == '>') {
        beginText();
        depth_ -= depth_ > 0 ? 1U : 0U;
    }
}

inline TagScanner::Refusal TagScanner::stepDeclaration(char c) {
    if (c == '-') {
        state_ = State::commentOpening;
    } else if (c == '[') {
        state_ = State::characterData;
    } else {
        return Refusal::documentType;
    }
    return Refusal::none;
}

/// In a piece that ends with '>' after so many of its mark.
inline void TagScanner::stepUntilMarks(char c, char mark, unsigned marks) {
    if (c == '>' && closing_ >= marks) {
        beginText();
    }
    closing_ = c == mark ? closing_ + 1 : 0;
}

TagScanner::Refusal TagScanner::step(char c) {
    if (++pieceSize_ > longestPiece) {
        return Refusal::longPiece;
    }
    switch (state_) {
    case State::text:
        if (c == '<') {
            beginMarkup();
        }
        break;
    case State::opened:
        stepOpened(c);
        break;
    case State::startTag:
        return stepStartTag(c);
    case State::doubleQuoted:
        state_ = c == '"' ? State::startTag : state_;
        break;
    case State::singleQuoted:
        state_ = c == '\'' ? State::startTag : state_;
        break;
    case State::endTag:
        stepEndTag(c);
        break;
    case State::instruction:
        stepUntilMarks(c, '?', 1);
        break;
    case State::declaration:
        return stepDeclaration(c);
    case State::commentOpening:
        state_ = State::comment; // anything but a second '-' the parser refuses
        break;
    case State::comment:
        stepUntilMarks(c, '-', 2);
        break;
    case State::characterData:
        stepUntilMarks(c, ']', 2);
        break;
    }
    return Refusal::none;
}

} // namespace velum::arxml
