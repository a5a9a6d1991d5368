#pragma once

#include "html/contents.h"
#include "html/out.h"
#include "report/input.h"

#include <string>
#include <vector>
#include <velum_arxml/read.h>

namespace velum::html {

/// What the checks and the import say of what was read.
std::vector<Finding>
findingsOf(QOB::Model const& model, report::Input const& input, arxml::Sources const& sources);

/// Writes one page about all objects of a model, with every finding at its object. `said`: what was
/// read. False if the sink fails.
bool writeReport(QOB::Model const& model,
                 arxml::Sources const& sources,
                 std::vector<Finding> findings,
                 std::string const& said,
                 Sink sink);

} // namespace velum::html
