#pragma once

#include "arxml/document_reader.h"
#include "arxml/documents.h"
#include "report/fail_on.h"
#include "report/report.h"

#include <string>
#include <vector>

namespace velum::dictionary {

class Dictionary;

/// How an import goes about its work.
struct ImportOptions {
    bool isStrict = false;          ///< Keep nothing if anything is wrong in the input.
    report::FailOn failOn{};        ///< What is wrong.
    arxml::OnProgress onProgress{}; ///< Told what is read; may be empty.
};

/// One import: what was read, and the report about it.
class Import {
public:
    /// Reads AUTOSAR files and makes objects of what they declare, in one transaction. Files are
    /// read in the order of their names, so that the order given has no say in what becomes of
    /// them.
    ///
    /// Raises `arxml::InputError` if a file cannot be read as a whole; the dictionary is as before
    /// then. Everything short of that is in the report.
    Import(std::vector<std::string> files,
           Dictionary& dictionary,
           const ImportOptions& options = {});

    const report::Report& report() const { return report_; }

    /// What the ids in the report stand for.
    const arxml::Names& names() const { return documents_.names; }
    const arxml::PathTree& paths() const { return documents_.index.paths(); }

    /// All that was read.
    const arxml::Documents& documents() const { return documents_; }

private:
    void read(const std::vector<std::string>& files, const arxml::OnProgress& onProgress);
    void build(Dictionary& dictionary, const ImportOptions& options);

    arxml::Documents documents_;
    report::Report report_;
};

} // namespace velum::dictionary
