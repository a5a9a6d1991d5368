#pragma once

#include "modelview.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace velum::python {

/// The files that a value names: a path, or an iterable of paths; folders stand for the files in
/// them. Raises TypeError for anything else.
std::vector<std::string> filesFrom(py::handle paths, char const* function);

/// One path: a str or a path object.
std::string pathFrom(py::handle path);

bool isPath(py::handle value);

/// Calls back with a number; also lets Ctrl-C end what takes long. Raises TypeError for what can't
/// be called.
std::function<void(std::uint64_t)> progressTo(py::object callback);

} // namespace velum::python
