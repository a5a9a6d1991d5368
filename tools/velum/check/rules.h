#pragma once

#include "check/issue.h"
#include "report/input.h"

#include <qob/qob.h>
#include <vector>

namespace velum::check {

/// The issues of all objects of a model and of the files that they were made of, in the order of
/// the files; those of objects that came from none are in the order of their paths.
std::vector<Issue> checkModel(QOB::Model const& model,
                              arxml::Sources const& sources = {},
                              report::Input const& input = {});

} // namespace velum::check
