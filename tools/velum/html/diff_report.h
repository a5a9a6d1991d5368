#pragma once

#include "html/out.h"

#include <qob/qob.h>
#include <string>
#include <velum_arxml/reading/sources.h>

namespace velum::html {

/// One of two releases.
struct Release {
    QOB::Model model;
    arxml::Sources sources;
    std::string said; ///< What was read.
};

/// Writes one page about what changed between two releases, with both values side by side; cells of
/// tables that changed are marked in the pictures, limits stand on one number line. False if the
/// sink fails.
bool writeDiffReport(Release const& before, Release const& after, Sink sink);

} // namespace velum::html
