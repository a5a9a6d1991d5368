#pragma once

#include "arxml/document_index.h"
#include "arxml/fragment.h"
#include "arxml/names.h"
#include "arxml/position.h"
#include "report/file_report.h"

#include <string>

namespace velum::arxml {

/// Takes the elements of packages that it wants, each whole.
class ElementSink {
public:
    virtual ~ElementSink() = default;

    /// Whether elements of that name are to be collected.
    virtual bool wants(NameId name) const = 0;

    /// Takes an element; accounts for every element of the fragment in the report of its file.
    virtual void take(const Fragment& fragment) = 0;
};

/// Reads one AUTOSAR document: enters its packages and named elements into `index`, hands what
/// `sink` wants to it and counts everything else as skipped in `report`.
///
/// Raises `InputError` if the file cannot be read, is no XML or no AUTOSAR R4 document. What was
/// entered and handed out until then is of no use.
void readDocument(const std::string& file,
                  FileId id,
                  Names& names,
                  DocumentIndex& index,
                  ElementSink& sink,
                  report::FileReport& report);

} // namespace velum::arxml
