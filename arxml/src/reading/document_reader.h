#pragma once

#include "findings/file_log.h"
#include "reading/documents.h"

#include <cstdint>
#include <functional>
#include <string>
#include <velum_arxml/source/position.h>

namespace velum::arxml {

/// Whether elements of that name, directly in a package, are to be kept whole.
using IsWanted = std::function<bool(NameId)>;

/// Told about each portion of a file that was read, with its size in bytes.
using OnProgress = std::function<void(std::uint64_t bytes)>;

/// Reads one AUTOSAR document into `documents`: its packages and the paths of its elements, whole
/// what is wanted, and of everything else the references. Counts every element in `log`, and
/// those that are not kept whole as consumed or skipped.
///
/// Raises `InputError` if the file cannot be read, is no XML or no AUTOSAR R4 document. What was
/// entered until then is of no use.
void readDocument(std::string const& file,
                  FileId id,
                  Documents& documents,
                  IsWanted const& isWanted,
                  FileLog& log,
                  OnProgress const& onProgress);

} // namespace velum::arxml
