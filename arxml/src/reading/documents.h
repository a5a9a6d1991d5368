#pragma once

#include "reading/document_index.h"
#include "reading/element_store.h"
#include "source/names.h"
#include "source/text_arena.h"

#include <vector>
#include <velum_arxml/source/position.h>

namespace velum::arxml {

/// A reference in an element that nobody wants: all that is asked of it is whether it leads
/// somewhere. Its texts are in the documents' arena.
struct LooseReference {
    FileId file;
    NameId name;
    Position position;
    PathId path; ///< Of the nearest element with a name.
    Reference reference;
};

/// Everything that is known of the files of one import.
struct Documents {
    Names names;
    DocumentIndex index;
    ElementStore store;
    std::vector<LooseReference> looseReferences;
    TextArena texts;
};

} // namespace velum::arxml
