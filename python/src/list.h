#pragma once

#include "property.h"

namespace velum::python {

/// velum.List: the values of a property with many, as they are now and will be.
extern PyTypeObject listType;

void addLists(py::module_& module);

/// A new list of an object's values.
PyObject* newList(HandleObject const& handle, Property const& property);

/// Makes the values of a property those of an iterable, in its order; removes all for null.
void assignList(HandleObject const& handle, Property const& property, PyObject* values);

} // namespace velum::python
