#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string_view>
#include <velum_arxml/source/position.h>

namespace velum::arxml {

/// Notes where start tags stand, from the bytes on their way to the parser.
///
/// The parser reads ahead of the nodes it hands out, so its own position is not that of a node.
/// Start tags come in the same order here and there; the first noted place is that of the next
/// element the parser delivers. Right for every encoding in which the ASCII characters stand for
/// themselves and for nothing else.
class TagScanner {
public:
    /// The most bytes that one tag, comment or text between two tags may have.
    static constexpr std::size_t longestPiece = 10'000'000;

    /// The most attributes that one element may have: the parser compares each with every other.
    static constexpr unsigned mostAttributes = 1'000;

    /// Why the bytes must not go on to the parser.
    enum class Refusal { none, documentType, longPiece, manyAttributes };

    /// Takes the next bytes. After a refusal the scanner takes nothing more.
    Refusal scan(std::string_view bytes);

    /// Where the refused piece begins.
    Position refusedAt() const { return pieceBegin_; }

    /// Where the next byte stands.
    Position here() const { return here_; }

    /// Whether an element or a piece of markup is still open.
    bool isOpen() const { return depth_ > 0 || state_ != State::text; }

    /// The place of the next element; none if the parser and the scanner disagree.
    std::optional<Position> takeElement();

private:
    enum class State {
        text,
        opened,         // after '<'
        startTag,       // in a start tag, outside of attribute values
        doubleQuoted,   // in an attribute value
        singleQuoted,   //
        endTag,         // after "</"
        instruction,    // after "<?"
        declaration,    // after "<!"
        commentOpening, // after "<!-"
        comment,        // after "<!--"
        characterData,  // after "<![" up to "]]>"
    };

    std::size_t skipByteOrderMark(std::string_view bytes);
    std::size_t plainBytes(std::string_view bytes) const;
    Refusal step(char const* byte);
    void stepOpened(char c);
    Refusal stepStartTag(char const* byte);
    void stepEndTag(char const* byte);
    Refusal stepDeclaration(char c);
    void stepUntilMarks(char const* byte, char mark, unsigned marks);
    void countUntil(char const* byte);
    void beginMarkup(char const* byte);
    void beginText(char const* byte);

    State state_ = State::text;
    bool started_ = false;
    unsigned byteOrderMark_ = 0; // bytes of it seen
    unsigned closing_ = 0;       // characters of "--", "]]" or "?" seen
    unsigned attributes_ = 0;    // of the start tag so far
    bool slash_ = false;         // the last character of the start tag so far is one
    std::size_t depth_ = 0;      // of the elements
    std::size_t pieceSize_ = 0;
    Position here_{1, 1};           // of the byte at `counted_`
    char const* counted_ = nullptr; // in the bytes at hand
    Position pieceBegin_{1, 1};
    std::deque<Position> elements_;
};

} // namespace velum::arxml
