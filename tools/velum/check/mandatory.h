#pragma once

#include "check/issue.h"

#include <vector>
#include <velum_types/types.h>

namespace velum::check {

/// Reports the properties of an object that its metaclass calls mandatory and that have no value.
/// The metamodel's own tables say which; those of the base metamodel (a name) don't count.
void checkMandatory(const QOB::ClassObject& object,
                    const std::string& path,
                    std::vector<Issue>& issues);

} // namespace velum::check
