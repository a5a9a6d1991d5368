#pragma once

#include "check/issue.h"

#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypescompumethod.h>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesreal.h>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesunit.h>

namespace velum::check {

/// The rules about one type: its range, its literals, its slope, its units.
void checkType(Zorvane::metamodel::types::Real const& type, Sink const& sink);

/// The rules about one unit. `element` is what it was made of, empty if there is nothing.
void checkUnit(Zorvane::metamodel::types::Unit const& unit,
               arxml::SourceElement element,
               Sink const& sink);

/// The rules about one computation method.
void checkMethod(Zorvane::metamodel::types::CompuMethod const& method,
                 arxml::SourceElement element,
                 Sink const& sink);

} // namespace velum::check
