#pragma once

#include "findings/file_log.h"
#include "source/names.h"
#include "source/path_tree.h"

#include <velum_arxml/findings/report.h>

namespace velum::arxml {

/// What a complete log says, with texts in place of ids.
FileReport reportOf(FileLog const& log, Names const& names, PathTree const& paths);

} // namespace velum::arxml
