#include "reading/pull_reader.h"

#include <libxml/xmlreader.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace velum::arxml {

namespace {

std::string_view view(xmlChar const* text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<char const*>(text);
}

std::string inBrackets(std::string_view text) {
    return " (" + std::string(text) + ")";
}

/// The parser's message in one line without its full stop.
std::string inOneLine(std::string_view message) {
    std::string line;
    for (const char c : message) {
        line += c == '\n' || c == '\r' || c == '\t' ? ' ' : c;
    }
    while (!line.empty() && (line.back() == ' ' || line.back() == '.')) {
        line.pop_back();
    }
    return line;
}

/// Whether ASCII characters stand for themselves, and only for themselves, in the encoding.
bool keepsAscii(std::string_view encoding) {
    std::string name(encoding);
    std::transform(name.begin(), name.end(), name.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return name.empty() || name == "UTF-8" || name == "UTF8" || name == "US-ASCII" ||
           name == "ASCII" || name.starts_with("ISO-8859-") || name.starts_with("WINDOWS-125");
}

} // namespace

void PullReader::FreeReader::operator()(_xmlTextReader* reader) const {
    xmlFreeTextReader(reader);
}

PullReader::PullReader(std::string file,
                       Names& names,
                       std::function<void(std::uint64_t)> onProgress)
    : file_(std::move(file)), names_(names), onProgress_(std::move(onProgress)), source_(file_) {
    // The source hands out UTF-16 as UTF-8, whatever the file declares.
    char const* const encoding = source_.isUtf16() ? "UTF-8" : nullptr;
    reader_.reset(xmlReaderForIO(&PullReader::supply,
                                 nullptr,
                                 this,
                                 nullptr,
                                 encoding,
                                 XML_PARSE_NONET | XML_PARSE_COMPACT));
    raiseIfFaulty(); // the first bytes are read at once
    if (!reader_) {
        throw std::bad_alloc();
    }
    xmlTextReaderSetStructuredErrorHandler(
        reader_.get(), [](void* self, xmlErrorPtr error) { onError(self, error); }, this);
}

PullReader::~PullReader() = default;

/// Nothing may be raised through the parser: it is kept until the parser has returned.
int PullReader::supply(void* self, char* buffer, int size) {
    auto& reader = *static_cast<PullReader*>(self);
    try {
        return reader.read(buffer, size);
    } catch (...) {
        reader.raised_ = std::current_exception();
        return -1;
    }
}

int PullReader::read(char* buffer, int size) {
    if (fault_) {
        return -1;
    }
    const std::size_t count = source_.read(buffer, static_cast<std::size_t>(size));
    const std::string_view bytes(buffer, count);
    anyByte_ = anyByte_ || count > 0;
    isBlank_ = isBlank_ && bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF") == std::string_view::npos;
    if (onProgress_) {
        onProgress_(source_.takeProgress());
    }
    noteScan(scanner_.scan(bytes));
    if (count == 0 && source_.fault() && !fault_) {
        ByteSource::Fault const& fault = *source_.fault();
        if (fault.hasPlace) {
            fault_.emplace(file_, scanner_.here(), fault.cause);
        } else {
            fault_.emplace(file_, fault.cause);
        }
    }
    return fault_ ? -1 : static_cast<int>(count);
}

void PullReader::noteScan(TagScanner::Refusal refusal) {
    switch (refusal) {
    case TagScanner::Refusal::documentType:
        fault_.emplace(file_, scanner_.refusedAt(), "Document type declarations are not read.");
        break;
    case TagScanner::Refusal::longPiece:
        fault_.emplace(file_,
                       scanner_.refusedAt(),
                       "This tag, comment or text is longer than " +
                           std::to_string(TagScanner::longestPiece) + " bytes.");
        break;
    case TagScanner::Refusal::manyAttributes:
        fault_.emplace(file_,
                       scanner_.refusedAt(),
                       "This element has more than " + std::to_string(TagScanner::mostAttributes) +
                           " attributes.");
        break;
    case TagScanner::Refusal::none:
        break;
    }
}

void PullReader::onError(void* self, _xmlError* error) {
    auto& reader = *static_cast<PullReader*>(self);
    if (error->level < XML_ERR_ERROR || reader.fault_) {
        return; // what follows the first fault is its consequence
    }
    if (error->code == XML_ERR_NO_MEMORY) {
        reader.raised_ = std::make_exception_ptr(std::bad_alloc());
        return;
    }
    reader.fault_.emplace(reader.faultOf(*error));
}

InputError PullReader::faultOf(_xmlError const& error) const {
    const auto number = [](int value) { return static_cast<std::uint32_t>(std::max(value, 1)); };
    const Position place{number(error.line), number(error.int2)};
    const std::string message = inOneLine(error.message == nullptr ? "" : error.message);
    // Some messages of the parser mislead: one advises a build option, one calls a text without
    // any tag empty, and one speaks of extra content where there is too little.
    if (message.starts_with("Excessive depth")) {
        return {file_, place, "Elements are nested more than 256 deep."};
    }
    if (anyByte_ && isBlank_) {
        return {file_, place, "The file is blank: there is nothing but white space in it."};
    }
    if (error.code == XML_ERR_DOCUMENT_EMPTY) {
        return {file_, place, "The file is no well-formed XML (it does not begin with a tag)."};
    }
    if (error.code == XML_ERR_DOCUMENT_END && source_.isAtEnd()) {
        if (!anyByte_) {
            return {file_, place, "The file is empty."};
        }
        if (scanner_.isOpen()) {
            return {file_, scanner_.here(), "The file ends before its root element does."};
        }
    }
    return {file_, place, "The file is no well-formed XML" + inBrackets(message) + "."};
}

void PullReader::raiseIfFaulty() const {
    if (raised_) {
        std::rethrow_exception(raised_);
    }
    if (fault_) {
        throw InputError(*fault_);
    }
}

PullReader::Event PullReader::next() {
    if (std::exchange(endPending_, false)) {
        return Event::end;
    }
    for (;;) {
        const int result = xmlTextReaderRead(reader_.get());
        raiseIfFaulty();
        if (result == 0) {
            return Event::finished;
        }
        if (result < 0) {
            throw InputError(file_, "The parser fails without a cause.");
        }
        switch (xmlTextReaderNodeType(reader_.get())) {
        case XML_READER_TYPE_ELEMENT:
            enterElement();
            return Event::start;
        case XML_READER_TYPE_END_ELEMENT:
            return Event::end;
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_CDATA:
            return Event::text;
        case XML_READER_TYPE_DOCUMENT_TYPE:
            throw InputError(file_, position_, "Document type declarations are not read.");
        default:
            break; // comments, instructions, white space between elements
        }
    }
}

void PullReader::enterElement() {
    if (!std::exchange(anyElement_, true)) {
        checkEncoding();
    }
    const auto place = scanner_.takeElement();
    if (!place) {
        throw InputError(file_, "The places of the elements cannot be told.");
    }
    position_ = *place;
    name_ = nameOf(*xmlTextReaderCurrentNode(reader_.get()));
    endPending_ = xmlTextReaderIsEmptyElement(reader_.get()) == 1;
}

void PullReader::checkEncoding() const {
    if (source_.isUtf16()) {
        return;
    }
    const std::string_view encoding = view(xmlTextReaderConstEncoding(reader_.get()));
    if (!keepsAscii(encoding)) {
        throw InputError(file_,
                         Position{1, 1},
                         "The encoding" + inBrackets(encoding) +
                             " is none of UTF-8, UTF-16, ASCII, ISO-8859 and Windows-125x.");
    }
}

NameId PullReader::nameOf(_xmlNode const& node) {
    const std::string_view uri = node.ns == nullptr ? std::string_view() : view(node.ns->href);
    NameId name = 0;
    if (uri != schemaNamespace) {
        std::string qualified = "{";
        qualified += uri;
        qualified += '}';
        qualified += view(node.name);
        name = names_.intern(qualified);
    } else {
        const auto [entry, isNew] = namesByPointer_.try_emplace(node.name, NameId{0});
        if (isNew) {
            entry->second = names_.intern(view(node.name));
        }
        name = entry->second;
    }
    if (name >= element::countOfKnown + mostNames) {
        refuse("There are more than " + std::to_string(mostNames) + " different element names.");
    }
    return name;
}

std::string_view PullReader::localName() const {
    return view(xmlTextReaderConstLocalName(reader_.get()));
}

std::string_view PullReader::namespaceUri() const {
    return view(xmlTextReaderConstNamespaceUri(reader_.get()));
}

std::string_view PullReader::text() const {
    return view(xmlTextReaderConstValue(reader_.get()));
}

std::vector<PullReader::Attribute> PullReader::attributes() const {
    std::vector<Attribute> all;
    xmlNodePtr node = xmlTextReaderCurrentNode(reader_.get());
    for (xmlAttr const* attribute = node->properties; attribute != nullptr;
         attribute = attribute->next) {
        xmlChar* value = xmlNodeListGetString(node->doc, attribute->children, 1);
        all.push_back({view(attribute->name), std::string(view(value))});
        xmlFree(value);
    }
    return all;
}

void PullReader::refuse(std::string const& cause) const {
    throw InputError(file_, position_, cause);
}

} // namespace velum::arxml
