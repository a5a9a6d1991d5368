#pragma once

#include <filesystem>
#include <qob/qob.h>
#include <string>
#include <vector>
#include <velum_arxml/source/export.h>
#include <velum_arxml/writing/write_report.h>

namespace velum::arxml {

/// Writes the objects of a model as AUTOSAR R4 files that `read` turns into an equal model.
/// Packages follow from the external ids, "/A/B/Name"; packages and elements stand in the order of
/// their paths. An element has the name of the object: an external id that ends otherwise is that
/// of before a renaming.
///
/// A file takes its name when it is whole; a failure leaves what was there. Whatever the model has
/// and the files have not is in the report: what was written is read back for that, unless the
/// options say otherwise. Raises `OutputError` if a file can't be written.
VELUM_ARXML_EXPORT WriteReport write(QOB::Model const& model,
                                     std::filesystem::path const& target,
                                     WriteOptions const& options = {});

/// Writes some objects, with what they contain. References to others are written by the path that
/// the target would have in the whole model.
VELUM_ARXML_EXPORT WriteReport write(std::vector<QOB::ClassObject> const& objects,
                                     std::filesystem::path const& target,
                                     WriteOptions const& options = {});

/// The same into a text: for callers that have no file.
VELUM_ARXML_EXPORT std::string
toText(QOB::Model const& model, WriteReport& report, WriteOptions const& options = {});

} // namespace velum::arxml
