#pragma once

#include "check/issue.h"

#include <velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationvaluespecification.h>
#include <velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationvaluetype.h>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesapplicationvaluespecification.h>

namespace velum::check {

/// The rules about the values of one application value, its axes included.
void checkValues(Zorvane::metamodel::types::ApplicationValueSpecification const& value,
                 Sink const& sink);

/// Reports the numbers of a value that lie outside the limits of the type that it is for.
void checkAgainstType(Zorvane::metamodel::foundation::ValueSpecification const& value,
                      Zorvane::metamodel::foundation::ValueType const& type,
                      Sink const& sink);

} // namespace velum::check
