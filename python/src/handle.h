#pragma once

#include "modelhold.h"

#include <qob/qob.h>
#include <string>

namespace velum::python {

/// An object of a model as seen in one deviant: an instance of velum.Object. Holds no Python
/// object, so the collector has nothing to look at.
struct HandleObject {
    PyObject ob_base;
    PyObject* weakReferences;
    QOB::ClassObject object;
    HoldRef hold;
};

/// velum.Object, the base of all classes.
extern PyTypeObject objectType;

void addHandles(py::module_& module);

/// Frees an instance of a class below velum.Object.
void deallocateHandle(PyObject* self);

/// A new reference to the object in its class's instance.
PyObject* wrap(QOB::ClassObject object, HoldRef hold);
/// The same as an instance of a known class.
PyObject* wrapAs(PyTypeObject* type, QOB::ClassObject object, HoldRef hold);
/// The same for an object that may be of another model than `near`. None for an empty handle.
PyObject* wrapNear(QOB::ClassObject object, HoldRef const& near);

inline bool isHandle(PyObject* value) {
    return PyObject_TypeCheck(value, &objectType) != 0;
}
/// Of a value that is a handle.
inline HandleObject& handleOf(PyObject* value) {
    return *reinterpret_cast<HandleObject*>(value);
}

/// What messages call a class: "velum.Unit", "str".
std::string typeName(PyTypeObject* type);
inline std::string typeNameOf(PyObject* value) {
    return typeName(Py_TYPE(value));
}

} // namespace velum::python
