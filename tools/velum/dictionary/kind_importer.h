#pragma once

#include "arxml/document_index.h"
#include "arxml/fragment.h"
#include "report/report.h"

namespace velum::dictionary {

class Dictionary;

/// What the importers of all kinds share during one import.
struct ImportContext {
    arxml::Names& names;
    arxml::DocumentIndex& index;
    report::Report& report;

    report::FileReport& fileReport(arxml::FileId file) const { return report.files[file]; }
};

/// Imports the elements of one name: it takes each of them while the files are read, and makes
/// objects of them when all are known.
class KindImporter {
public:
    virtual ~KindImporter() = default;

    /// The name of its elements.
    virtual arxml::NameId kind() const = 0;

    /// Takes one element. Each element of the fragment is accounted for now or in `build`.
    virtual void take(const arxml::Fragment& fragment) = 0;

    /// Makes the objects, after all files have been read.
    virtual void build(Dictionary& dictionary) = 0;
};

} // namespace velum::dictionary
