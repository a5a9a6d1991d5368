#pragma once

#include "failure.h"

namespace velum::python {

/// What the command-line tool does: read, write, load, save, diff and check.
void addTool(py::module_& module);

} // namespace velum::python
