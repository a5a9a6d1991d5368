#pragma once

#include "failure.h"

namespace velum::python {

/// Model.observe(): velum.Observation, which calls a function after each change.
void addObservations(py::module_& module);

} // namespace velum::python
