#pragma once

#include "model/addresses.h"

#include <cstddef>
#include <optional>
#include <qob/qob.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velum::html {

/// One finding of the checks or of the import.
struct Finding {
    std::string severity; ///< "error", "warning" or "note".
    std::string rule;     ///< Of a check its rule, of the import its reason.
    std::string path;
    std::string place; ///< "FILE:LINE:COLUMN"; empty if it came from no file.
    std::string text;
};

/// An object that the page has a section for: what belongs to it stands there as well.
struct Entry {
    QOB::ClassObject object;
    std::string path;    ///< Its address.
    std::string package; ///< "/A/B"; empty for what has no path.
    std::string name;
    std::string_view metaclass;
    std::string anchor; ///< Follows from the address alone, so that links to it stay.
    std::vector<std::size_t> uses{};
    std::vector<std::size_t> usedBy{};
    std::vector<Finding const*> findings{};
};

/// By package, then by name.
bool isBefore(Entry const& a, Entry const& b);

/// The anchor of an address: seven letters and digits.
std::string anchorOf(std::string_view address);

/// What a page is about, with the links between its sections.
class Contents {
public:
    Contents(QOB::Model const& model, std::vector<Finding> findings);
    Contents(Contents const&) = delete;
    Contents& operator=(Contents const&) = delete;

    /// By package, then by name.
    std::vector<Entry> const& entries() const { return entries_; }
    std::vector<Finding> const& findings() const { return findings_; }
    model::Addresses& addresses() { return addresses_; }

    /// The section that an object stands in; null if there is none.
    Entry const* entryOf(QOB::ClassObject const& object);
    /// The same, for a link to it.
    Entry const* linkTo(QOB::ClassObject const& object);
    /// The places of the entries that `linkTo` returned since the last call of this.
    std::vector<std::size_t> takeLinked() { return std::exchange(linked_, {}); }
    /// The section of a path or of the nearest path around it.
    Entry const* entryAt(std::string_view path) const;

private:
    void addEntries(QOB::Model const& model);
    void addLinks();
    void addFindings();
    std::size_t placeOf(QOB::ClassObject const& object);

    model::Addresses addresses_;
    std::vector<Finding> findings_;
    std::vector<Entry> entries_;
    std::unordered_map<void const*, std::size_t> byObject_; ///< With all that belongs to it.
    std::unordered_map<std::string_view, std::size_t> byPath_;
    std::vector<std::size_t> linked_;
};

/// The package that the section of an object stands in, and the name that it has there.
struct Placed {
    std::string package;
    std::string name;
};
Placed placed(QOB::ClassObject const& object, std::string const& address);

} // namespace velum::html
