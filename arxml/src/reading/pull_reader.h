#pragma once

#include "reading/tag_scanner.h"
#include "source/byte_source.h"
#include "source/names.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <velum_arxml/source/input_error.h>
#include <velum_arxml/source/position.h>

// The parser's own types, so that its headers stay in one source.
struct _xmlParserCtxt;
struct _xmlError;

namespace velum::arxml {

/// The one schema namespace that is read.
inline constexpr std::string_view schemaNamespace = "http://autosar.org/schema/r4.0";

/// Streams the elements and texts of one XML file with their places.
///
/// Holds what a few kilobytes of the file say, whatever its size. Entities are neither defined nor
/// fetched: a file with a document type declaration is refused before the parser sees it.
/// Every operation raises `InputError` with the place and the cause if the file is at fault.
class PullReader {
public:
    /// How deep elements may be nested.
    static constexpr unsigned mostDepth = 256;

    /// The most different element names in one import, beside those that the importers know; the
    /// schema has fewer than ten thousand.
    static constexpr std::size_t mostNames = 50'000;

    enum class Event { start, end, text, finished };

    /// Opens `file`, or the standard input if it is "-". `names` must outlive the reader.
    /// `onProgress` is told the size of each portion that is read.
    PullReader(std::string file, Names& names, std::function<void(std::uint64_t)> onProgress = {});
    ~PullReader();
    PullReader(PullReader const&) = delete;
    PullReader& operator=(PullReader const&) = delete;

    /// Steps to the next event. An empty element gives a start and an end.
    Event next();

    /// Of the element started last; the name of one outside of the schema's namespace is
    /// "{namespace}name".
    NameId name() const { return name_; }
    std::string_view localName() const { return step_.localName; }
    std::string_view namespaceUri() const { return step_.uri; } ///< Empty without a namespace.
    Position position() const { return position_; }

    /// An attribute; namespace declarations are none. Valid until the next step.
    struct Attribute {
        std::string_view name; ///< Without its prefix.
        std::string_view value;
    };

    /// Of the element started last; valid until the next step.
    std::vector<Attribute> const& attributes() const { return attributes_; }

    /// Of the text met last, which is more than white space; valid until the next step.
    std::string_view text() const { return textOf(step_.text); }

    /// Refuses the file for a cause at the element started last.
    [[noreturn]] void refuse(std::string const& cause) const;

private:
    struct FreeParser {
        void operator()(_xmlParserCtxt* parser) const;
    };

    /// Where a text stands in `texts_`.
    struct Piece {
        std::size_t begin = 0;
        std::size_t size = 0;
    };

    /// What the parser told; the names are its own, kept as long as it is.
    struct Step {
        Event event = Event::finished;
        char const* localName = "";
        char const* uri = "";
        std::size_t firstAttribute = 0; // in `told_`
        std::size_t attributes = 0;
        Piece text;
    };

    struct ToldAttribute {
        char const* name;
        Piece value;
    };

    struct Callbacks; // what the parser calls

    void parseMore();
    void startParser();
    void noteScan(TagScanner::Refusal refusal);
    void noteSourceFault();
    void noteError(_xmlError const& error);
    void tellStart(char const* name, char const* uri, int attributes, unsigned char const** all);
    void tellEnd();
    void tellText(std::string_view text);
    void endText(bool evenIfBlank);
    Piece keep(std::string_view text);
    std::string_view textOf(Piece piece) const { return {texts_.data() + piece.begin, piece.size}; }

    void enterElement();
    void checkEncoding() const;
    InputError faultOf(_xmlError const& error) const;
    NameId nameOf(Step const& step);
    void raiseIfFaulty() const;

    std::string file_;
    Names& names_;
    std::function<void(std::uint64_t)> onProgress_;
    ByteSource source_;
    TagScanner scanner_;
    std::unique_ptr<_xmlParserCtxt, FreeParser> parser_;
    std::vector<char> buffer_;        // bytes on their way to the parser
    std::optional<InputError> fault_; // the first one
    std::exception_ptr raised_;       // what a callback raised
    bool isParsed_ = false;           // to the end

    // What the parser told of the last bytes, and how much of it was handed out.
    std::vector<Step> steps_;
    std::size_t taken_ = 0;
    std::vector<ToldAttribute> told_;
    std::string texts_;
    std::size_t textBegin_ = 0; // of the text that hasn't ended yet, in `texts_`

    std::unordered_map<char const*, NameId> namesByPointer_; // the parser keeps each name once
    char const* schemaUri_ = nullptr;                        // the same
    Step step_;                                              // the last one
    std::vector<Attribute> attributes_;                      // of the element started last
    NameId name_ = 0;
    Position position_{1, 1};
    unsigned depth_ = 0;
    bool anyByte_ = false;
    bool isBlank_ = true; // nothing but white space so far
    bool anyElement_ = false;
};

} // namespace velum::arxml
