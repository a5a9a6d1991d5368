#pragma once

#include <cstdint>
#include <functional>
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
    circle,        ///< A type or constant refers to itself; a reader makes no object of it.
    changed,       ///< A reader gets another value, or an object more or less.
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
    case Remark::circle:
        return "circle";
    case Remark::changed:
        return "changed";
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

    /// Reads what was written, and reports every difference from the model. That takes as long as
    /// the file takes to read, and the memory of a second model. Without it the report has what the
    /// writer itself knows; what was read from files goes round whatever is chosen here.
    bool isReadBack = true;

    /// Called now and then with the number of objects written so far; may be empty.
    std::function<void(std::uint64_t objects)> onProgress{};
    std::stop_token stop{}; ///< Ends the writing; the target is as it was then.
};

} // namespace velum::arxml
