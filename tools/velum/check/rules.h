#pragma once

#include "check/issue.h"

#include <vector>
#include <velum_types/types.h>

namespace velum::check {

/// The issues of all objects of a model, in the order of their paths.
std::vector<Issue> checkModel(const QOB::Model& model);

} // namespace velum::check
