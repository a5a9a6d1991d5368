#pragma once

#include <pybind11/pybind11.h>

namespace velum::python {

/// A type that lives as long as the process, to be filled in and made ready.
inline PyTypeObject staticType(char const* name, std::size_t size, char const* documentation) {
    PyTypeObject type = {};
    Py_SET_REFCNT(reinterpret_cast<PyObject*>(&type), 1);
    type.tp_name = name;
    type.tp_basicsize = static_cast<Py_ssize_t>(size);
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_doc = documentation;
    return type;
}

} // namespace velum::python
