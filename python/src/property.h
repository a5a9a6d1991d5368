#pragma once

#include "converter.h"
#include "handle.h"

#include <qob/qob.h>
#include <string>

namespace velum::python {

/// A property of a class, ready to be read and written by its number.
struct Property {
    QOB::IntrospectiveMethods const* record;
    unsigned id;
    Converter const* converter;
    PyTypeObject* owner; ///< The class that declares it.
    bool isMany;
    bool isUnique;             ///< A list: no value twice.
    bool isReadOnly;           ///< Derived: the library has no way to write it.
    bool isMandatory;          ///< A value that is always there.
    std::string name;          ///< In Python: "owned_literals".
    std::string qualifiedName; ///< For messages: "Enumeration.owned_literals".
    std::string metamodelName; ///< "Enumeration.OwnedLiteral".
    std::string documentation;
};

/// The type of what stands in the classes: a data descriptor. Reads and writes a single value;
/// gives a list for a property with many.
extern PyTypeObject propertyType;

void addProperties(py::module_& module);

/// A new descriptor. The property stays for as long as the process runs.
PyObject* newDescriptor(Property const& property);

/// The property of a descriptor; null for another value.
Property const* propertyOf(PyObject* descriptor);

inline bool isProperty(PyObject* value) {
    return Py_IS_TYPE(value, &propertyType);
}

/// What an attribute access does, of a descriptor and an object. Null deletes the value.
PyObject* readProperty(PyObject* descriptor, PyObject* object) noexcept;
int writeProperty(PyObject* descriptor, PyObject* object, PyObject* value) noexcept;

/// Sets a single value or the contents of a list. Null removes it, and so does None for a single
/// value. For an object whose class has the property, in its model's thread.
void setProperty(HandleObject const& handle, Property const& property, PyObject* value);

} // namespace velum::python
