#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>
#include <velum_arxml/findings/reason.h>
#include <velum_arxml/source/position.h>

namespace velum::arxml {

/// Where something stands: in the file and in the tree of names.
struct Place {
    Position position;
    std::string path; ///< Of the nearest element with a name.
};

/// Something that is worth telling by itself: about one element, or about one target of references.
struct Finding {
    Reason reason;
    bool isFault;            ///< Whether an object is wrong or incomplete by it; a note otherwise.
    std::string text;        ///< A sentence.
    std::string target;      ///< What the references ask for; empty if it is not about references.
    std::uint64_t count = 0; ///< How often it is the case; more than once only for a target.
    std::vector<Place> places; ///< The first of them in the file, at most `mostPlaces`.

    static constexpr std::size_t mostPlaces = 3;
};

/// Something that could be an object and is none.
struct Omission {
    Place place;
    std::string element;
    Reason reason;
    std::string text; ///< A sentence; empty if the reason says all.
};

/// The elements of one name that objects were made of.
struct ConsumedElements {
    std::string element;
    std::uint64_t count = 0;
};

/// The elements of one name that were skipped for one reason.
struct SkippedElements {
    std::string element;
    Reason reason;
    std::uint64_t count = 0;
    Place first; ///< Of the one that stands first in the file.
};

/// What became of one file. Every element is either consumed or skipped.
struct FileReport {
    std::string file;
    std::vector<ConsumedElements> consumed; ///< By name.
    std::vector<SkippedElements> skipped;   ///< By name and reason.
    std::vector<Omission> omissions;        ///< In the order of the file.
    std::vector<Finding> findings;          ///< In the order of the file.
    std::uint64_t elementCount = 0;
    std::uint64_t consumedCount = 0;
    std::uint64_t skippedCount = 0;
};

/// How many objects of one metaclass were made.
struct ClassCount {
    std::string metaclass;
    std::uint64_t count = 0;
};

/// How a reading ended.
enum class Outcome : std::uint8_t {
    kept,    ///< The model holds the objects.
    refused, ///< `Options::isAcceptable` said no; the model is as before.
    stopped, ///< The caller asked to stop; the model is as before, and the report is empty.
};

/// What the model holds now and what became of the files' elements.
struct Report {
    std::vector<ClassCount> classes; ///< By name.
    std::vector<FileReport> files;   ///< In the order in which they were read.
    Outcome outcome = Outcome::kept;

    bool isKept() const { return outcome == Outcome::kept; }
};

} // namespace velum::arxml
