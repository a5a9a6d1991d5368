#pragma once

#include "findings/tally.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>
#include <velum_arxml/findings/reason.h>

namespace velum::arxml {

/// What is noted about one file while it is read and objects are made of it; the report about the
/// file is made of it at the end.
class FileLog {
public:
    /// What becomes a `Finding`.
    struct Entry {
        Reason reason;
        bool isFault;
        std::string text;
        std::string target;
        std::uint64_t count = 0;
        std::vector<Spot> spots;
    };

    /// What becomes an `Omission`.
    struct Omitted {
        Spot spot;
        NameId element;
        Reason reason;
        std::string text;
    };

    explicit FileLog(std::string name) : file(std::move(name)) {}

    std::string file;
    Tally tally;
    std::vector<Omitted> omissions;

    /// In the order of the file once they are sorted.
    std::vector<Entry> const& entries() const { return entries_; }

    /// Something by which an object is wrong or incomplete, if the reason says so.
    void find(Spot const& spot, Reason reason, std::string text, std::string_view target = {}) {
        add(spot, reason, isFault(reason), std::move(text), target);
    }

    /// Something that is no fault of the input whatever its reason.
    void note(Spot const& spot, Reason reason, std::string text, std::string_view target = {}) {
        add(spot, reason, false, std::move(text), target);
    }

    /// Brings entries and omissions into the order of the file.
    void sort();

private:
    void
    add(Spot const& spot, Reason reason, bool isFault, std::string text, std::string_view target);

    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::size_t> byTarget_; // with reason and text; into entries_
};

} // namespace velum::arxml
