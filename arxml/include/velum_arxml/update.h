#pragma once

#include <cstddef>
#include <qob/qob.h>
#include <string>
#include <string_view>
#include <vector>
#include <velum_arxml/source/export.h>
#include <velum_arxml/source/input_error.h>
#include <velum_arxml/write.h>

namespace velum::arxml {

/// What became of a file that was to be changed.
struct UpdateReport {
    std::size_t edits = 0; ///< places in the file that were changed
    std::string refusal;   ///< why nothing was changed; empty if all was
    bool isRefused() const { return !refusal.empty(); }
};

/// Changes a file so that it says what a model says that was read from it, with the files beside
/// it, and changed since. Everything else in the file stays byte for byte: comments, white space,
/// order, and what no object holds. An object whose name isn't the end of its external id is
/// renamed, with all references in the file.
///
/// The result is read before it takes the place of the file. Where it doesn't say what the model
/// says, nothing is changed and the report has the reason. Raises `InputError` if a file can't be
/// read, and `OutputError` if the file can't be written.
VELUM_ARXML_EXPORT UpdateReport update(std::string const& file,
                                       QOB::Model const& model,
                                       std::vector<std::string> const& beside = {});

/// Gives the element at a path another name in all files, with all references to it and to what is
/// below it. Nothing but the names and references changes. All files are changed or none.
VELUM_ARXML_EXPORT UpdateReport rename(std::vector<std::string> const& files,
                                       std::string const& path,
                                       std::string const& newName);

} // namespace velum::arxml
