#include "reading/tag_scanner.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace velum::arxml {

namespace {

/// The bytes EF BB BF at the start of a file take no column.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

bool countsInTag(char c) {
    return c == '>' || c == '"' || c == '=' || c == '/' || c == '\'';
}

bool isAscii(std::string_view bytes) {
    unsigned char all = 0;
    for (const char c : bytes) {
        all |= static_cast<unsigned char>(c);
    }
    return all < 0x80U;
}

std::uint32_t charactersIn(std::string_view bytes) {
    const auto continued =
        isAscii(bytes) ? 0 : std::count_if(bytes.begin(), bytes.end(), continuesCharacter);
    return static_cast<std::uint32_t>(bytes.size()) - static_cast<std::uint32_t>(continued);
}

} // namespace

TagScanner::Refusal TagScanner::scan(std::string_view bytes) {
    std::size_t i = started_ ? 0 : skipByteOrderMark(bytes);
    counted_ = bytes.data() + i;
    while (i < bytes.size()) {
        if (const std::size_t plain = plainBytes(bytes.substr(i)); plain > 0) {
            pieceSize_ += plain;
            if (pieceSize_ > longestPiece) {
                return Refusal::longPiece;
            }
            slash_ = false;
            i += plain;
            if (i == bytes.size()) {
                break;
            }
        }
        if (const Refusal refusal = step(&bytes[i]); refusal != Refusal::none) {
            return refusal;
        }
        ++i;
    }
    countUntil(bytes.data() + bytes.size());
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

/// How many bytes come before the next one that may change the state.
std::size_t TagScanner::plainBytes(std::string_view bytes) const {
    std::size_t end = 0;
    switch (state_) {
    case State::text:
        end = bytes.find('<');
        break;
    case State::startTag:
        end = static_cast<std::size_t>(std::find_if(bytes.begin(), bytes.end(), countsInTag) -
                                       bytes.begin());
        break;
    case State::doubleQuoted:
        end = bytes.find('"');
        break;
    case State::singleQuoted:
        end = bytes.find('\'');
        break;
    case State::endTag:
        end = bytes.find('>');
        break;
    default:
        break;
    }
    return std::min(end, bytes.size());
}

/// Brings the place up to a byte of those at hand.
void TagScanner::countUntil(char const* byte) {
    std::string_view bytes(counted_, static_cast<std::size_t>(byte - counted_));
    counted_ = byte;
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos;
         end = bytes.find('\n')) {
        ++here_.line;
        here_.column = 1;
        bytes.remove_prefix(end + 1);
    }
    here_.column += charactersIn(bytes);
}

std::optional<Position> TagScanner::takeElement() {
    if (elements_.empty()) {
        return std::nullopt;
    }
    const Position place = elements_.front();
    elements_.pop_front();
    return place;
}

void TagScanner::beginMarkup(char const* byte) {
    countUntil(byte);
    pieceSize_ = 0;
    pieceBegin_ = here_;
    state_ = State::opened;
}

/// After the '>' at hand.
void TagScanner::beginText(char const* byte) {
    countUntil(byte + 1);
    pieceSize_ = 0;
    pieceBegin_ = here_;
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

inline TagScanner::Refusal TagScanner::stepStartTag(char const* byte) {
    const char c = *byte;
    if (c == '"') {
        state_ = State::doubleQuoted;
    } else if (c == '\'') {
        state_ = State::singleQuoted;
    } else if (c == '=' && ++attributes_ > mostAttributes) {
        return Refusal::manyAttributes;
    } else if (c == '>') {
        beginText(byte);
        depth_ -= slash_ ? 1U : 0U;
    }
    slash_ = c == '/';
    return Refusal::none;
}

inline void TagScanner::stepEndTag(char const* byte) {
    if (*byte == '>') {
        beginText(byte);
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
inline void TagScanner::stepUntilMarks(char const* byte, char mark, unsigned marks) {
    const char c = *byte;
    if (c == '>' && closing_ >= marks) {
        beginText(byte);
    }
    closing_ = c == mark ? closing_ + 1 : 0;
}

TagScanner::Refusal TagScanner::step(char const* byte) {
    const char c = *byte;
    if (++pieceSize_ > longestPiece) {
        return Refusal::longPiece;
    }
    switch (state_) {
    case State::text:
        if (c == '<') {
            beginMarkup(byte);
        }
        break;
    case State::opened:
        stepOpened(c);
        break;
    case State::startTag:
        return stepStartTag(byte);
    case State::doubleQuoted:
        state_ = c == '"' ? State::startTag : state_;
        break;
    case State::singleQuoted:
        state_ = c == '\'' ? State::startTag : state_;
        break;
    case State::endTag:
        stepEndTag(byte);
        break;
    case State::instruction:
        stepUntilMarks(byte, '?', 1);
        break;
    case State::declaration:
        return stepDeclaration(c);
    case State::commentOpening:
        state_ = State::comment; // anything but a second '-' the parser refuses
        break;
    case State::comment:
        stepUntilMarks(byte, '-', 2);
        break;
    case State::characterData:
        stepUntilMarks(byte, ']', 2);
        break;
    }
    return Refusal::none;
}

} // namespace velum::arxml
