#pragma once

#include "updating/source_text.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velum::arxml {

/// Resolves references by the reference bases of all documents that are read together.
class Bases {
public:
    void addFrom(std::string_view text);
    void add(std::string const& package, SourceBase const& base) {
        byPackage_[package].push_back(base);
    }

    /// The path that a reference names; empty if its base isn't known.
    std::string resolve(SourceRef const& reference) const;
    /// The package in which a relative reference begins; empty if its base isn't known.
    std::string folderOf(SourceRef const& reference) const { return folderOf(reference, 0); }

private:
    std::string folderOf(SourceRef const& reference, int depth) const;

    std::unordered_map<std::string, std::vector<SourceBase>> byPackage_;
};

using Renamings = std::vector<std::pair<std::string, std::string>>; // from path, to path

/// The path after the renamings, of what stands at a path or below it; none if it isn't concerned.
std::optional<std::string> renamed(std::string_view path, Renamings const& renamings);

/// The changes of a document that renamings ask for: of names, and of all references.
std::vector<TextEdit>
renamingEdits(std::string_view text, Renamings const& renamings, Bases const& bases);

} // namespace velum::arxml
