#pragma once

#include "findings/tally.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <velum_arxml/findings/reason.h>

namespace velum::arxml {

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
    NameId element;
    Reason reason;
    std::string text; ///< A sentence; empty if the reason says all.
};

/// What the import of one file came to.
class FileReport {
public:
    explicit FileReport(std::string name) : file(std::move(name)) {}

    std::string file;
    Tally tally;
    std::vector<Omission> omissions;

    /// In the order of the file once they are sorted.
    std::vector<Finding> const& findings() const { return findings_; }

    /// Something by which an object is wrong or incomplete, if the reason says so.
    void find(Place const& place, Reason reason, std::string text, std::string_view target = {}) {
        add(place, reason, isFault(reason), std::move(text), target);
    }

    /// Something that is no fault of the input whatever its reason.
    void note(Place const& place, Reason reason, std::string text, std::string_view target = {}) {
        add(place, reason, false, std::move(text), target);
    }

    /// Brings findings and omissions into the order of the file.
    void sort();

private:
    void
    add(Place const& place, Reason reason, bool isFault, std::string text, std::string_view target);

    std::vector<Finding> findings_;
    std::unordered_map<std::string, std::size_t> byTarget_; // with reason and text; into findings_
};

} // namespace velum::arxml
