#pragma once

#include "failure.h"
#include "modelhold.h"

#include <memory>
#include <qob/kernel/value/valuebox.h>
#include <qob/qob.h>
#include <string>
#include <typeinfo>

namespace velum::python {

/// Between the values of one data type, or the objects of one class, and Python. Which one a
/// property needs is decided when its class is made.
class Converter {
public:
    Converter() = default;
    Converter(Converter const&) = delete;
    Converter& operator=(Converter const&) = delete;
    virtual ~Converter() = default;

    /// A new reference; None for an invalid value and for an empty handle. `near` is the model
    /// of the object that has the value.
    virtual PyObject* toPython(QOB::Object const& value, HoldRef const& near) const = 0;
    /// Raises TypeError, with the name of the property, for a value of another type; never called
    /// with None.
    virtual QOB::Object fromPython(PyObject* value, std::string const& property) const = 0;
    /// What messages and docstrings call the type: "int", "velum.Unit".
    virtual std::string typeName() const = 0;
    virtual bool isForObjects() const { return false; }

protected:
    [[noreturn]] void refuse(PyObject* value, std::string const& property) const;
};

/// For objects of a class and of those below it.
std::unique_ptr<Converter> objectConverter(PyTypeObject* type);

/// Of a data type by its dotted name. Made at the first use; never freed.
Converter const& converterOf(QOB::ImmutableType const& dataType);

/// Of the kernel's numbers: QOB::Integer and QOB::Real.
template <class Number>
Converter const& numberConverter();

/// The value in a box of class T; null if there is no box. The box of a property's value is always
/// of the property's class, so that nothing needs to be looked up.
template <class T>
T const* valueIn(QOB::Object const& box) {
    using Box = QOB::ValueBox<T>;
    auto const* const boxed = static_cast<Box const*>(box.get());
    return boxed == nullptr ? nullptr : static_cast<T const*>(boxed->Box::findValue(typeid(T)));
}

/// A value whose property isn't known: of any data type, or an object.
py::object anyToPython(QOB::Object const& value, HoldRef const& near);

/// The dotted name of a data type.
std::string dottedName(QOB::ImmutableType const& type);

} // namespace velum::python
