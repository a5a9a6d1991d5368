#pragma once

#include "arxml/document_index.h"
#include "arxml/names.h"
#include "report/report.h"

#include <string>
#include <vector>

namespace velum::dictionary {

class Dictionary;

/// One import: what was read, and the report about it.
class Import {
public:
    /// Reads AUTOSAR files and makes objects of what they declare, in one transaction.
    ///
    /// Raises `arxml::InputError` if a file cannot be read as a whole; the dictionary is as before
    /// then. Everything short of that is in the report.
    Import(const std::vector<std::string>& files, Dictionary& dictionary);

    const report::Report& report() const { return report_; }

    /// What the ids in the report stand for.
    const arxml::Names& names() const { return names_; }
    const arxml::PathTree& paths() const { return index_.paths(); }

private:
    arxml::Names names_;
    arxml::DocumentIndex index_;
    report::Report report_;
};

} // namespace velum::dictionary
