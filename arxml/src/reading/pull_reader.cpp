#include "reading/pull_reader.h"

#include "source/white_space.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace velum::arxml {

namespace {

/// The parser gets so many bytes at a time. It moves those it hasn't read yet to the front again
/// and again, so they had better be few.
constexpr std::size_t handedAtATime = 8192;

char const* chars(xmlChar const* text) {
    return text == nullptr ? "" : reinterpret_cast<char const*>(text);
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

/// What the parser calls. Nothing may be raised through it: that is kept until it has returned.
struct PullReader::Callbacks {
    template <typename F>
    static void guard(void* self, F const& tell) {
        auto& reader = *static_cast<PullReader*>(self);
        if (reader.raised_) {
            return;
        }
        try {
            tell(reader);
        } catch (...) {
            reader.raised_ = std::current_exception();
        }
    }

    static void startElement(void* self,
                             xmlChar const* name,
                             xmlChar const* /*prefix*/,
                             xmlChar const* uri,
                             int /*namespaces*/,
                             xmlChar const** /*declarations*/,
                             int attributes,
                             int /*defaulted*/,
                             xmlChar const** all) {
        guard(self, [&](PullReader& reader) {
            reader.tellStart(chars(name), chars(uri), attributes, all);
        });
    }

    static void endElement(void* self,
                           xmlChar const* /*name*/,
                           xmlChar const* /*prefix*/,
                           xmlChar const* /*uri*/) {
        guard(self, [](PullReader& reader) { reader.tellEnd(); });
    }

    static void characters(void* self, xmlChar const* text, int size) {
        guard(self, [&](PullReader& reader) {
            reader.tellText({chars(text), static_cast<std::size_t>(size)});
        });
    }

    static void characterData(void* self, xmlChar const* text, int size) {
        guard(self, [&](PullReader& reader) {
            reader.endText(false);
            reader.tellText({chars(text), static_cast<std::size_t>(size)});
            reader.endText(true);
        });
    }

    static void comment(void* self, xmlChar const* /*text*/) {
        guard(self, [](PullReader& reader) { reader.endText(false); });
    }

    static void instruction(void* self, xmlChar const* /*target*/, xmlChar const* /*text*/) {
        comment(self, nullptr);
    }

    static void error(void* self, xmlErrorPtr error) {
        guard(self, [&](PullReader& reader) { reader.noteError(*error); });
    }
};

void PullReader::FreeParser::operator()(_xmlParserCtxt* parser) const {
    xmlFreeParserCtxt(parser);
}

PullReader::PullReader(std::string file,
                       Names& names,
                       std::function<void(std::uint64_t)> onProgress)
    : file_(std::move(file)),
      names_(names),
      onProgress_(std::move(onProgress)),
      source_(file_),
      buffer_(handedAtATime) {
}

PullReader::~PullReader() = default;

void PullReader::startParser() {
    xmlSAXHandler calls{};
    calls.initialized = XML_SAX2_MAGIC;
    calls.startElementNs = &Callbacks::startElement;
    calls.endElementNs = &Callbacks::endElement;
    calls.characters = &Callbacks::characters;
    calls.ignorableWhitespace = &Callbacks::characters;
    calls.cdataBlock = &Callbacks::characterData;
    calls.comment = &Callbacks::comment;
    calls.processingInstruction = &Callbacks::instruction;
    calls.serror = &Callbacks::error;
    parser_.reset(xmlCreatePushParserCtxt(&calls, this, nullptr, 0, nullptr));
    if (!parser_) {
        throw std::bad_alloc();
    }
    // The source hands out UTF-16 as UTF-8, whatever the file declares. Of entities there are only
    // those of the language itself.
    xmlCtxtUseOptions(parser_.get(),
                      XML_PARSE_NONET | XML_PARSE_NOENT |
                          (source_.isUtf16() ? XML_PARSE_IGNORE_ENC : 0));
}

/// Hands the next bytes to the parser; what it finds in them goes to `steps_`.
void PullReader::parseMore() {
    texts_.erase(0, textBegin_);
    textBegin_ = 0;
    steps_.clear();
    told_.clear();
    taken_ = 0;
    const std::size_t count = source_.read(buffer_.data(), buffer_.size());
    const std::string_view bytes(buffer_.data(), count);
    anyByte_ = anyByte_ || count > 0;
    isBlank_ = isBlank_ && bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF") == std::string_view::npos;
    if (onProgress_) {
        onProgress_(source_.takeProgress());
    }
    noteScan(scanner_.scan(bytes));
    if (count == 0) {
        noteSourceFault();
    }
    raiseIfFaulty(); // the parser doesn't see bytes that are refused
    if (!parser_) {
        startParser();
    }
    isParsed_ = count == 0;
    xmlParseChunk(parser_.get(), bytes.data(), static_cast<int>(count), isParsed_ ? 1 : 0);
}

void PullReader::noteSourceFault() {
    if (!source_.fault()) {
        return;
    }
    ByteSource::Fault const& fault = *source_.fault();
    if (fault.hasPlace) {
        fault_.emplace(file_, scanner_.here(), fault.cause);
    } else {
        fault_.emplace(file_, fault.cause);
    }
}

PullReader::Piece PullReader::keep(std::string_view text) {
    const Piece piece{texts_.size(), text.size()};
    texts_ += text;
    return piece;
}

/// An attribute is told as its name, prefix and namespace, and where its value begins and ends.
void PullReader::tellStart(char const* name,
                           char const* uri,
                           int attributes,
                           unsigned char const** all) {
    endText(false);
    Step step{Event::start, name, uri, told_.size(), static_cast<std::size_t>(attributes), {}};
    for (int i = 0; i < attributes; ++i) {
        unsigned char const* const* const attribute = all + std::ptrdiff_t(i) * 5;
        const auto size = static_cast<std::size_t>(attribute[4] - attribute[3]);
        told_.push_back({chars(attribute[0]), keep({chars(attribute[3]), size})});
    }
    textBegin_ = texts_.size();
    steps_.push_back(step);
}

void PullReader::tellEnd() {
    endText(false);
    steps_.emplace_back().event = Event::end;
}

/// A text may come in parts.
void PullReader::tellText(std::string_view text) {
    texts_ += text;
}

void PullReader::endText(bool evenIfBlank) {
    const std::size_t end = texts_.size();
    if (end == textBegin_) {
        return;
    }
    if (evenIfBlank || !isBlank(std::string_view(texts_).substr(textBegin_))) {
        Step& step = steps_.emplace_back();
        step.event = Event::text;
        step.text = {textBegin_, end - textBegin_};
        textBegin_ = end;
    } else {
        texts_.resize(textBegin_);
    }
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

void PullReader::noteError(_xmlError const& error) {
    if (error.level < XML_ERR_ERROR || fault_) {
        return; // what follows the first fault is its consequence
    }
    if (error.code == XML_ERR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    fault_.emplace(faultOf(error));
}

InputError PullReader::faultOf(_xmlError const& error) const {
    const auto number = [](int value) { return static_cast<std::uint32_t>(std::max(value, 1)); };
    const Position place{number(error.line), number(error.int2)};
    const std::string message = inOneLine(error.message == nullptr ? "" : error.message);
    // Some messages of the parser mislead: one calls a text without any tag empty, and one speaks
    // of extra content where there is too little.
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
    // What stands before a fault is handed out first.
    while (taken_ == steps_.size()) {
        raiseIfFaulty();
        if (isParsed_) {
            return Event::finished;
        }
        parseMore();
    }
    step_ = steps_[taken_++];
    if (step_.event == Event::start) {
        enterElement();
    } else if (step_.event == Event::end) {
        --depth_;
    }
    return step_.event;
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
    if (++depth_ > mostDepth) {
        refuse("Elements are nested more than " + std::to_string(mostDepth) + " deep.");
    }
    name_ = nameOf(step_);
    attributes_.clear();
    for (std::size_t i = 0; i < step_.attributes; ++i) {
        ToldAttribute const& told = told_[step_.firstAttribute + i];
        attributes_.push_back({told.name, textOf(told.value)});
    }
}

void PullReader::checkEncoding() const {
    if (source_.isUtf16()) {
        return;
    }
    xmlChar const* const declared =
        parser_->encoding != nullptr ? parser_->encoding : parser_->input->encoding;
    const std::string_view encoding = chars(declared);
    if (!keepsAscii(encoding)) {
        throw InputError(file_,
                         Position{1, 1},
                         "The encoding" + inBrackets(encoding) +
                             " is none of UTF-8, UTF-16, ASCII, ISO-8859 and Windows-125x.");
    }
}

NameId PullReader::nameOf(Step const& step) {
    NameId name = 0;
    if (step.uri != schemaUri_ && step.uri == schemaNamespace) {
        schemaUri_ = step.uri;
    }
    if (step.uri != schemaUri_) {
        std::string qualified = "{";
        qualified += step.uri;
        qualified += '}';
        qualified += step.localName;
        name = names_.intern(qualified);
    } else {
        const auto [entry, isNew] = namesByPointer_.try_emplace(step.localName, NameId{0});
        if (isNew) {
            entry->second = names_.intern(step.localName);
        }
        name = entry->second;
    }
    if (name >= element::countOfKnown + mostNames) {
        refuse("There are more than " + std::to_string(mostNames) + " different element names.");
    }
    return name;
}

void PullReader::refuse(std::string const& cause) const {
    throw InputError(file_, position_, cause);
}

} // namespace velum::arxml
