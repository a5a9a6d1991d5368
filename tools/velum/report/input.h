#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <velum_arxml/findings/report.h>

namespace velum::report {

/// A store that was read, and what it holds.
struct StoreFile {
    std::string file;
    std::uint64_t objectCount = 0;
    std::uint64_t unresolvedCount = 0; ///< References to other models, which aren't there.
};

/// What a command has read.
struct Input {
    /// The AUTOSAR files; the counts of classes are of everything.
    arxml::Report documents;
    std::vector<StoreFile> stores;
    /// From which store the object at a path came; empty if there are no other files.
    std::unordered_map<std::string, std::size_t> storeOfPath;

    /// The names of all files, in the order in which they were read.
    std::vector<std::string> files() const;
    /// The store from which the object at a path came; null if it came from an AUTOSAR file.
    std::string const* storeWith(std::string const& path) const;
};

} // namespace velum::report
