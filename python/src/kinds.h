#pragma once

#include "converter.h"

namespace velum::python {

/// For an enumeration: the members of an enum.Enum, which is made of the live literals.
std::unique_ptr<Converter> kindConverter(QOB::ImmutableEnumeration const& live,
                                         std::string const& dottedName);

/// Enters all kinds that were made in the module.
void addKinds(py::module_& module);

} // namespace velum::python
