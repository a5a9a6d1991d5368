#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <qob/qob.h>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>
#include <velum_arxml/source/export.h>

namespace velum::arxml {

/// A file can't be written. `what()` is one line: the file and the cause.
class VELUM_ARXML_EXPORT OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a writer has to say about an object.
enum class Remark : std::uint8_t {
    newPath,       ///< The object had no path, or one that is taken; it is written under this one.
    badName,       ///< The name is no identifier of the format.
    badText,       ///< A text has characters that XML can't hold.
    noPlace,       ///< The format has no place for this.
    dangling,      ///< A reference leads to an object that isn't written and has no path.
    contradiction, ///< Two objects need different values at one place of the file.
};

constexpr std::string_view code(Remark remark) {
    switch (remark) {
    case Remark::newPath:
        return "new-path";
    case Remark::badName:
        return "bad-name";
    case Remark::badText:
        return "bad-text";
    case Remark::noPlace:
        return "no-place";
    case Remark::dangling:
        return "dangling";
    case Remark::contradiction:
        return "contradiction";
    }
    return "";
}

struct WriteFinding {
    Remark remark;
    std::string path; ///< of the object, as it is written
    std::string text; ///< a sentence
};

struct WriteReport {
    std::vector<std::string> files; ///< in the order of their names
    std::uint64_t objects = 0;      ///< elements in packages
    std::uint64_t bytes = 0;
    std::vector<WriteFinding> findings;
    bool isStopped = false; ///< Then nothing was written.
};

enum class Layout : std::uint8_t {
    oneFile,
    filePerPackage, ///< The target is a folder; each file has the name of its package.
};

/// How a writing goes about its work.
struct WriteOptions {
    std::string schema = "AUTOSAR_00051"; ///< The name of the schema without ".xsd".
    Layout layout = Layout::oneFile;
    std::string package = "/Model"; ///< The package of objects that have no path.

    /// Called now and then with the number of objects written so far; may be empty.
    std::function<void(std::uint64_t objects)> onProgress{};
    std::stop_token stop{}; ///< Ends the writing; the target is as it was then.
};

/// Writes the objects of a model as AUTOSAR R4 files that `read` turns into an equal model.
/// Packages follow from the external ids, "/A/B/Name"; packages and elements stand in the order of
/// their paths. An element has the name of the object: an external id that ends otherwise is that
/// of before a renaming.
///
/// A file takes its name when it is whole; a failure leaves what was there. Whatever the model has
/// and the files have not is in the report. Raises `OutputError` if a file can't be written.
VELUM_ARXML_EXPORT WriteReport write(QOB::Model const& model,
                                     std::filesystem::path const& target,
                                     WriteOptions const& options = {});

/// Writes some objects, with what they contain. References to others are written by the path that
/// the target would have in the whole model.
VELUM_ARXML_EXPORT WriteReport write(std::vector<QOB::ClassObject> const& objects,
                                     std::filesystem::path const& target,
                                     WriteOptions const& options = {});

/// The same into a text: for callers that have no file.
VELUM_ARXML_EXPORT std::string
toText(QOB::Model const& model, WriteReport& report, WriteOptions const& options = {});

} // namespace velum::arxml
