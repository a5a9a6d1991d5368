#include "writing/xml_writer.h"

#include <array>
#include <utility>

namespace velum::arxml {

namespace {

constexpr std::size_t pieceSize = std::size_t(1) << 18U;
constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// The bytes of a text that can't be copied as they are.
constexpr std::array<bool, 256> makeSpecial() {
    std::array<bool, 256> special{};
    for (std::size_t byte = 0; byte < special.size(); ++byte) {
        special[byte] = byte < 0x20 || byte >= 0x7F;
    }
    special['\n'] = special['\t'] = false;
    special['&'] = special['<'] = special['>'] = special['"'] = true;
    return special;
}
constexpr std::array<bool, 256> isSpecial = makeSpecial();

unsigned byteAt(std::string_view text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
}

/// How many bytes the character takes that begins there; 0 if it is none that XML can hold.
std::size_t lengthOfCharacter(std::string_view text, std::size_t at) {
    const unsigned first = byteAt(text, at);
    if (first < 0x80) {
        return first >= 0x20 ? 1 : 0;
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    unsigned code = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned next = byteAt(text, at + i);
        if ((next & 0xC0U) != 0x80U) {
            return 0;
        }
        code = (code << 6U) | (next & 0x3FU);
    }
    const bool isOverlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    const bool isNone = code == 0xFFFE || code == 0xFFFF || code > 0x10FFFF;
    return isOverlong || isSurrogate || isNone ? 0 : length;
}

} // namespace

XmlWriter::XmlWriter(ByteSink sink) : sink_(std::move(sink)) {
    buffer_.reserve(2 * pieceSize);
}

void XmlWriter::declaration(std::string_view schema) {
    buffer_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<AUTOSAR xmlns=\"http://autosar.org/schema/r4.0\" "
               "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
               "xsi:schemaLocation=\"http://autosar.org/schema/r4.0 ";
    escape(schema);
    buffer_ += ".xsd\">\n";
    depth_ = 1;
}

void XmlWriter::indent() {
    constexpr std::string_view blanks = "                                                ";
    for (std::size_t rest = std::size_t(depth_) * 2; rest > 0;) {
        const std::string_view part = blanks.substr(0, rest);
        buffer_ += part;
        rest -= part.size();
    }
}

void XmlWriter::openPending() {
    for (const std::string_view name : pending_) {
        indent();
        startTag(name, {}, {});
        buffer_ += '\n';
        ++depth_;
    }
    pending_.clear();
}

void XmlWriter::startTag(std::string_view name,
                         std::string_view attribute,
                         std::string_view value) {
    buffer_ += '<';
    buffer_ += name;
    if (!attribute.empty()) {
        buffer_ += ' ';
        buffer_ += attribute;
        buffer_ += "=\"";
        escape(value);
        buffer_ += '"';
    }
    buffer_ += '>';
}

void XmlWriter::endTag(std::string_view name) {
    buffer_ += "</";
    buffer_ += name;
    buffer_ += '>';
}

void XmlWriter::open(std::string_view name, std::string_view attribute, std::string_view value) {
    openPending();
    indent();
    startTag(name, attribute, value);
    buffer_ += '\n';
    ++depth_;
}

void XmlWriter::close(std::string_view name) {
    if (!pending_.empty()) {
        pending_.pop_back();
        return;
    }
    --depth_;
    indent();
    endTag(name);
    buffer_ += '\n';
}

void XmlWriter::empty(std::string_view name) {
    openPending();
    indent();
    buffer_ += '<';
    buffer_ += name;
    buffer_ += "/>\n";
}

void XmlWriter::leaf(std::string_view name,
                     std::string_view attribute,
                     std::string_view value,
                     std::string_view text) {
    openPending();
    indent();
    inlineLeaf(name, attribute, value, text);
    buffer_ += '\n';
}

void XmlWriter::leaf(std::string_view name,
                     std::initializer_list<Attribute> attributes,
                     std::string_view text) {
    openPending();
    indent();
    buffer_ += '<';
    buffer_ += name;
    for (Attribute const& attribute : attributes) {
        buffer_ += ' ';
        buffer_ += attribute.name;
        buffer_ += "=\"";
        escape(attribute.value);
        buffer_ += '"';
    }
    buffer_ += '>';
    escape(text);
    endTag(name);
    buffer_ += '\n';
}

void XmlWriter::inlineLeaf(std::string_view name,
                           std::string_view attribute,
                           std::string_view value,
                           std::string_view text) {
    startTag(name, attribute, value);
    escape(text);
    endTag(name);
}

void XmlWriter::beginMixed(std::string_view name) {
    openPending();
    indent();
    startTag(name, {}, {});
}

void XmlWriter::endMixed(std::string_view name) {
    endTag(name);
    buffer_ += '\n';
}

void XmlWriter::escape(std::string_view text) {
    std::size_t begin = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        if (!isSpecial[static_cast<unsigned char>(text[at])]) {
            ++at;
            continue;
        }
        buffer_ += text.substr(begin, at - begin);
        at += escapeSpecial(text, at);
        begin = at;
    }
    buffer_ += text.substr(begin);
}

/// Writes one character that needs a look; returns how many bytes of the text it takes.
std::size_t XmlWriter::escapeSpecial(std::string_view text, std::size_t at) {
    switch (text[at]) {
    case '&':
        buffer_ += "&amp;";
        return 1;
    case '<':
        buffer_ += "&lt;";
        return 1;
    case '>':
        buffer_ += "&gt;";
        return 1;
    case '"':
        buffer_ += "&quot;";
        return 1;
    case '\r': // as it is, it would be read as the end of a line
        buffer_ += "&#13;";
        return 1;
    default:
        break;
    }
    const std::size_t length = lengthOfCharacter(text, at);
    if (length == 0) {
        buffer_ += replacement;
        isMended_ = true;
        return 1;
    }
    buffer_ += text.substr(at, length);
    return length;
}

void XmlWriter::flushIfFull() {
    if (buffer_.size() >= pieceSize) {
        flush();
    }
}

void XmlWriter::flush() {
    sink_(buffer_);
    written_ += buffer_.size();
    buffer_.clear();
}

} // namespace velum::arxml
