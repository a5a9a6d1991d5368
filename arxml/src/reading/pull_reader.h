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
struct _xmlTextReader;
struct _xmlNode;
struct _xmlError;

namespace velum::arxml {

/// The one schema namespace that is read.
inline constexpr std::string_view schemaNamespace = "http://autosar.org/schema/r4.0";

/// Streams the elements and texts of one XML file with their places.
///
/// Holds one node at a time whatever the size of the file. Entities are neither defined nor
/// fetched: a file with a document type declaration is refused before the parser sees it.
/// Every operation raises `InputError` with the place and the cause if the file is at fault.
class PullReader {
public:
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
    std::string_view localName() const;
    std::string_view namespaceUri() const; ///< Empty without a namespace.
    Position position() const { return position_; }

    /// An attribute; namespace declarations are none. Valid until the next step.
    struct Attribute {
        std::string_view name; ///< Without its prefix.
        std::string value;
    };

    /// Of the element started last.
    std::vector<Attribute> attributes() const;

    /// Of the text met last; valid until the next step.
    std::string_view text() const;

    /// Refuses the file for a cause at the element started last.
    [[noreturn]] void refuse(std::string const& cause) const;

private:
    struct FreeReader {
        void operator()(_xmlTextReader* reader) const;
    };

    static int supply(void* self, char* buffer, int size);
    static void onError(void* self, _xmlError* error);

    int read(char* buffer, int size);
    void noteScan(TagScanner::Refusal refusal);
    void enterElement();
    void checkEncoding() const;
    InputError faultOf(_xmlError const& error) const;
    NameId nameOf(_xmlNode const& node);
    void raiseIfFaulty() const;

    std::string file_;
    Names& names_;
    std::function<void(std::uint64_t)> onProgress_;
    ByteSource source_;
    TagScanner scanner_;
    std::optional<InputError> fault_; // the first one; set from within the parser's callbacks
    std::exception_ptr raised_;       // what a callback raised
    std::unordered_map<void const*, NameId> namesByPointer_; // the parser keeps each name once
    std::unique_ptr<_xmlTextReader, FreeReader> reader_;
    NameId name_ = 0;
    Position position_{1, 1};
    bool anyByte_ = false;
    bool isBlank_ = true; // nothing but white space so far
    bool anyElement_ = false;
    bool endPending_ = false; // an empty element was started
};

} // namespace velum::arxml
