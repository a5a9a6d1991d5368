#pragma once

#include "converter.h"

namespace velum::python {

/// For a data type that pairs a number with a unit, by its dotted name; null for another one.
/// The classes are velum.DataSize and velum.Time.
std::unique_ptr<Converter> quantityConverter(std::string const& dottedName);

/// Makes the classes and enters them in the module; the kinds of their units are there.
void addQuantities(py::module_& module);

} // namespace velum::python
