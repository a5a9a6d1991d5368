#include "converter.h"

#include "handle.h"
#include "kinds.h"
#include "quantity.h"
#include "text.h"

#include <climits>

#include <cmath>
#include <limits>
#include <unordered_map>

namespace velum::python {

namespace {

class BooleanConverter final : public Converter {
public:
    PyObject* toPython(QOB::Object const& value, HoldRef const&) const override {
        auto const* const truth = valueIn<QOB::Boolean>(value);
        if (truth == nullptr || !truth->isValid()) {
            Py_RETURN_NONE;
        }
        return PyBool_FromLong(static_cast<bool const&>(*truth) ? 1 : 0);
    }
    QOB::Object fromPython(PyObject* value, std::string const& property) const override {
        if (PyBool_Check(value) == 0) {
            refuse(value, property);
        }
        return QOB::Boolean(value == Py_True);
    }
    std::string typeName() const override { return "bool"; }
};

class IntegerConverter final : public Converter {
public:
    PyObject* toPython(QOB::Object const& value, HoldRef const&) const override {
        auto const* const number = valueIn<QOB::Integer>(value);
        if (number == nullptr || !number->isValid()) {
            Py_RETURN_NONE;
        }
        return PyLong_FromLong(static_cast<int const&>(*number));
    }
    QOB::Object fromPython(PyObject* value, std::string const& property) const override {
        if (PyIndex_Check(value) == 0) {
            refuse(value, property);
        }
        int isOutside = 0;
        long const number = PyLong_AsLongAndOverflow(value, &isOutside);
        require(isOutside != 0 || number != -1 || PyErr_Occurred() == nullptr);
        // The smallest number of 32 bits is the library's mark of an invalid value.
        if (isOutside != 0 || number <= INT_MIN || number > INT_MAX) {
            raise(PyExc_OverflowError,
                  property + " takes whole numbers from -2147483647 to 2147483647.");
        }
        return QOB::Integer(static_cast<int>(number));
    }
    std::string typeName() const override { return "int"; }
};

class RealConverter final : public Converter {
public:
    PyObject* toPython(QOB::Object const& value, HoldRef const&) const override {
        auto const* const number = valueIn<QOB::Real>(value);
        if (number == nullptr || !number->isValid()) {
            Py_RETURN_NONE;
        }
        return PyFloat_FromDouble(static_cast<double const&>(*number));
    }
    QOB::Object fromPython(PyObject* value, std::string const& property) const override {
        double const number =
            PyFloat_CheckExact(value) != 0 ? PyFloat_AS_DOUBLE(value) : converted(value, property);
        // Not with the bits of the one NaN that is the library's mark of an invalid value.
        return QOB::Real(std::isnan(number) ? std::numeric_limits<double>::quiet_NaN() : number);
    }
    std::string typeName() const override { return "float"; }

private:
    double converted(PyObject* value, std::string const& property) const {
        if (PyNumber_Check(value) == 0 || PyComplex_Check(value) != 0) {
            refuse(value, property);
        }
        double const number = PyFloat_AsDouble(value);
        require(number != -1.0 || PyErr_Occurred() == nullptr);
        return number;
    }
};

class TextConverter final : public Converter {
public:
    PyObject* toPython(QOB::Object const& value, HoldRef const&) const override {
        auto const* const text = valueIn<QOB::String>(value);
        if (text == nullptr || !text->isValid()) {
            Py_RETURN_NONE;
        }
        return required(newText(text->view()));
    }
    QOB::Object fromPython(PyObject* value, std::string const& property) const override {
        if (PyUnicode_Check(value) == 0) {
            refuse(value, property);
        }
        return textFromPython(value);
    }
    std::string typeName() const override { return "str"; }
};

/// For data types of other libraries: by their texts.
class OtherConverter final : public Converter {
public:
    explicit OtherConverter(std::string dataType) : dataType_(std::move(dataType)) {}

    PyObject* toPython(QOB::Object const& value, HoldRef const&) const override {
        if (value.get() == nullptr) {
            Py_RETURN_NONE;
        }
        return required(newText(value.toString().view()));
    }
    QOB::Object fromPython(PyObject* value, std::string const& property) const override {
        if (PyUnicode_Check(value) == 0) {
            refuse(value, property);
        }
        return QOB::ValueObjectFactory::createFromString(dataType_, textFromPython(value));
    }
    std::string typeName() const override { return "str"; }

private:
    std::string dataType_;
};

class ObjectConverter final : public Converter {
public:
    explicit ObjectConverter(PyTypeObject* type) : type_(type) {}

    PyObject* toPython(QOB::Object const& value, HoldRef const& near) const override {
        QOB::ClassObject object(value);
        if (!object.isValid()) {
            Py_RETURN_NONE; // nothing, or an object that was destroyed
        }
        return wrapNear(std::move(object), near);
    }
    QOB::Object fromPython(PyObject* value, std::string const& property) const override {
        if (PyObject_TypeCheck(value, type_) == 0) {
            refuse(value, property);
        }
        HandleObject const& handle = handleOf(value);
        handle.hold->requireThread();
        if (!handle.object.isValid()) {
            raise(errorType, property + " can't refer to an object that no longer exists.");
        }
        return handle.object;
    }
    std::string typeName() const override { return python::typeName(type_); }
    bool isForObjects() const override { return true; }

private:
    PyTypeObject* type_;
};

std::unique_ptr<Converter> newConverter(QOB::ImmutableType const& dataType) {
    std::string const name = dottedName(dataType);
    if (name == QOB::Boolean::getTypeName()) {
        return std::make_unique<BooleanConverter>();
    }
    if (name == QOB::Integer::getTypeName()) {
        return std::make_unique<IntegerConverter>();
    }
    if (name == QOB::Real::getTypeName()) {
        return std::make_unique<RealConverter>();
    }
    if (name == QOB::String::getTypeName()) {
        return std::make_unique<TextConverter>();
    }
    if (auto quantity = quantityConverter(name)) {
        return quantity;
    }
    if (QOB::ImmutableEnumeration const enumeration(dataType); enumeration.isValid()) {
        return kindConverter(enumeration, name);
    }
    return std::make_unique<OtherConverter>(name);
}

using Converters = std::unordered_map<std::string, std::unique_ptr<Converter>>;

Converters& converters() {
    static auto& all = *new Converters;
    return all;
}

} // namespace

void Converter::refuse(PyObject* value, std::string const& property) const {
    raise(PyExc_TypeError, property + " takes " + typeName() + ", not " + typeNameOf(value) + ".");
}

template <>
Converter const& numberConverter<QOB::Integer>() {
    static auto const& converter = *new IntegerConverter;
    return converter;
}
template <>
Converter const& numberConverter<QOB::Real>() {
    static auto const& converter = *new RealConverter;
    return converter;
}

std::unique_ptr<Converter> objectConverter(PyTypeObject* type) {
    return std::make_unique<ObjectConverter>(type);
}

Converter const& converterOf(QOB::ImmutableType const& dataType) {
    auto& known = converters()[dottedName(dataType)];
    if (known == nullptr) {
        known = newConverter(dataType);
    }
    return *known;
}

py::object anyToPython(QOB::Object const& value, HoldRef const& near) {
    if (value.get() == nullptr) {
        return py::none();
    }
    if (QOB::ClassObject const object(value); object.get() != nullptr) {
        return py::reinterpret_steal<py::object>(wrapNear(object, near));
    }
    auto const known = converters().find(value.getLumvoName(false));
    if (known == converters().end()) {
        return py::reinterpret_steal<py::object>(required(newText(value.toString().view())));
    }
    return py::reinterpret_steal<py::object>(known->second->toPython(value, near));
}

std::string dottedName(QOB::ImmutableType const& type) {
    std::string name(type.getName());
    if (!type.hasPackage()) {
        return name;
    }
    for (QOB::ImmutablePackage each = type.getPackage();; each = each.getParent()) {
        name.insert(0, std::string(each.getName()) + ".");
        if (!each.hasParent()) {
            return name;
        }
    }
}

} // namespace velum::python
