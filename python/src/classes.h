#pragma once

#include "property.h"

#include <qob/qob.h>
#include <string>

namespace velum::python {

/// A class of the metamodel as Python has it.
struct ClassEntry {
    std::string name; ///< Without its package.
    std::string call; ///< For messages: "velum.Unit()".
    PyTypeObject* type = nullptr;
    QOB::IntrospectiveMethods const* record = nullptr;
    Property const* nameProperty = nullptr; ///< Null for a class whose objects have no name.
};

/// Makes a class for each live class of the metamodels that are there, with its properties, and
/// enters them in the module. There is no code for any one of them.
void addClasses(py::module_& module);

/// The class of an object; velum.Object if its metaclass has none.
PyTypeObject* typeOf(QOB::NSInterface::ClassObjectIntf const& object);

/// Of a class below velum.Object, or of one that a program derived from it.
ClassEntry const& classOf(PyTypeObject* type);

/// How Python calls a live property, also one that every object has.
std::string pythonNameOf(QOB::ImmutableProperty const& live);

/// What a call of a class does: a new object in a model, with a name and other properties.
PyObject* createObject(PyTypeObject* type, PyObject* arguments, PyObject* keywords);

} // namespace velum::python
