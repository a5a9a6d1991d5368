#pragma once

#include "reading/documents.h"

#include <string>
#include <vector>

namespace velum::arxml {

/// What sources share: all that was read.
struct SourceContent {
    Documents documents;
    std::vector<std::string> files;          ///< Their names, by id.
    std::vector<ElementStore::Index> byPath; ///< The first element of each path, by path.

    /// Fills `byPath`.
    void indexPaths();
};

} // namespace velum::arxml
