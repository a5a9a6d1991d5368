#pragma once

#include "findings/report.h"
#include "reading/document_reader.h"
#include "reading/documents.h"

#include <functional>
#include <qob/qob.h>
#include <string>
#include <vector>

namespace velum::arxml {

/// How an import goes about its work.
struct ImportOptions {
    /// Decides by the report whether the objects are kept; without it they are.
    std::function<bool(Report const&)> isAcceptable;
    OnProgress onProgress; ///< Called for each portion that was read; may be empty.
};

/// One import: what was read, and the report about it.
class Import {
public:
    /// Reads AUTOSAR files and makes objects of what they declare, in one transaction. Files are
    /// read in the order of their names, so that the order given has no say in what becomes of
    /// them.
    ///
    /// Raises `InputError` if a file cannot be read as a whole; the model is as before
    /// then. Everything short of that is in the report.
    Import(std::vector<std::string> files,
           QOB::Model const& model,
           ImportOptions const& options = {});

    Report const& report() const { return report_; }

    /// What the ids in the report stand for.
    Names const& names() const { return documents_.names; }
    PathTree const& paths() const { return documents_.index.paths(); }

    /// All that was read.
    Documents const& documents() const { return documents_; }

private:
    void read(std::vector<std::string> const& files, OnProgress const& onProgress);
    void build(QOB::Model const& model, ImportOptions const& options);

    Documents documents_;
    Report report_;
};

} // namespace velum::arxml
