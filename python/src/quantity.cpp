#include "quantity.h"

#include "statictype.h"
#include "text.h"

#include <new>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h>

namespace velum::python {

namespace {

namespace types = Zorvane::metamodel::types;

/// A value class as Python shows it: immutable, equal by value.
template <class Quantity>
class QuantityClass {
    struct Instance {
        PyObject ob_base;
        Quantity value;
    };
    using Number = typename Quantity::Number;
    using Unit = typename Quantity::Unit;

public:
    static PyTypeObject type;

    static PyObject* create(Quantity value) {
        PyObject* const self = required(type.tp_alloc(&type, 0));
        new (&reinterpret_cast<Instance*>(self)->value) Quantity(value);
        return self;
    }
    static bool isInstance(PyObject* value) { return PyObject_TypeCheck(value, &type) != 0; }
    static Quantity const& in(PyObject* self) { return reinterpret_cast<Instance*>(self)->value; }

    static Quantity fromText(PyObject* text) { return Quantity::fromString(textFromPython(text)); }

    static PyTypeObject describe(char const* name, char const* documentation) {
        PyTypeObject made = staticType(name, sizeof(Instance), documentation);
        made.tp_new = &make;
        made.tp_repr = &represent;
        made.tp_str = &text;
        made.tp_richcompare = &compare;
        made.tp_hash = &hash;
        made.tp_getset = attributes;
        made.tp_methods = methods;
        return made;
    }

private:
    static Converter const& unitConverter() { return converterOf(Unit::MetaDataType()); }
    static HoldRef none() { return HoldRef(nullptr); }

    static PyObject* make(PyTypeObject*, PyObject* arguments, PyObject* keywords) {
        return guarded<PyObject*>(nullptr, [&] {
            static char const* names[] = {"value", "unit", nullptr};
            PyObject* number = nullptr;
            PyObject* unit = nullptr;
            require(PyArg_ParseTupleAndKeywords(
                        arguments, keywords, "O|O", const_cast<char**>(names), &number, &unit) !=
                    0);
            std::string const name = shortName();
            if (unit == nullptr && PyUnicode_Check(number) != 0) {
                return create(fromText(number));
            }
            if (unit == nullptr) {
                raise(PyExc_TypeError, name + " takes a number and a unit, or a text of both.");
            }
            Number const value = number == Py_None
                                     ? Number()
                                     : Number(numberConverter<Number>().fromPython(number, name));
            return create(Quantity(value, Unit(unitConverter().fromPython(unit, name))));
        });
    }
    static std::string shortName() {
        std::string const name = type.tp_name;
        return name.substr(name.rfind('.') + 1);
    }
    static PyObject* value(PyObject* self, void*) {
        return guarded<PyObject*>(nullptr, [&] {
            return numberConverter<Number>().toPython(in(self).getValue(), none());
        });
    }
    static PyObject* unit(PyObject* self, void*) {
        return guarded<PyObject*>(
            nullptr, [&] { return unitConverter().toPython(in(self).getUnit(), none()); });
    }
    static PyObject* text(PyObject* self) {
        return guarded<PyObject*>(nullptr,
                                  [&] { return required(newText(in(self).toString().view())); });
    }
    static PyObject* represent(PyObject* self) {
        return guarded<PyObject*>(nullptr, [&] {
            return required(newText(shortName() + "('" + std::string(in(self).toString()) + "')"));
        });
    }
    static PyObject* compare(PyObject* a, PyObject* b, int operation) {
        if ((operation != Py_EQ && operation != Py_NE) || !isInstance(a) || !isInstance(b)) {
            Py_RETURN_NOTIMPLEMENTED;
        }
        return PyBool_FromLong((operation == Py_EQ) == (in(a) == in(b)) ? 1 : 0);
    }
    static Py_hash_t hash(PyObject* self) { return static_cast<Py_hash_t>(in(self).hash()); }
    static PyObject* reduce(PyObject* self, PyObject*) {
        return guarded<PyObject*>(nullptr, [&] {
            auto const written = py::reinterpret_steal<py::object>(required(text(self)));
            py::handle const made(reinterpret_cast<PyObject*>(&type));
            return py::make_tuple(made, py::make_tuple(written)).release().ptr();
        });
    }

    static PyGetSetDef attributes[3];
    static PyMethodDef methods[2];
};

template <class Quantity>
PyGetSetDef QuantityClass<Quantity>::attributes[3] = {
    {"value", &value, nullptr, "The number; None if there is none.", nullptr},
    {"unit", &unit, nullptr, "The unit.", nullptr},
    {}};
template <class Quantity>
PyMethodDef QuantityClass<Quantity>::methods[2] = {
    {"__reduce__", &reduce, METH_NOARGS, "For copy and pickle."},
    {}};

template <>
PyTypeObject QuantityClass<types::DataSize>::type =
    describe("velum.DataSize",
             "A size in memory: DataSize(32, DataSizeUnitKind.bit), or '32|bit'.");
template <>
PyTypeObject QuantityClass<types::Time>::type =
    describe("velum.Time", "A length of time: Time(1.5, TimeUnitKind.ms), or '1.5|ms'.");

template <class Quantity>
class QuantityConverter final : public Converter {
    using Class = QuantityClass<Quantity>;

public:
    PyObject* toPython(QOB::Object const& value, HoldRef const&) const override {
        auto const* const quantity = valueIn<Quantity>(value);
        if (quantity == nullptr) {
            Py_RETURN_NONE;
        }
        return Class::create(*quantity);
    }
    QOB::Object fromPython(PyObject* value, std::string const& property) const override {
        if (Class::isInstance(value)) {
            return Class::in(value);
        }
        if (PyUnicode_Check(value) == 0) {
            refuse(value, property);
        }
        return Class::fromText(value);
    }
    std::string typeName() const override { return Class::type.tp_name; }
};

template <class Quantity>
void add(py::module_& module) {
    PyTypeObject& type = QuantityClass<Quantity>::type;
    require(PyType_Ready(&type) == 0);
    converterOf(Quantity::Unit::MetaDataType()); // the kind of its unit
    py::object const names = py::make_tuple("value", "unit");
    require(PyDict_SetItemString(type.tp_dict, "__match_args__", names.ptr()) == 0);
    std::string const name = type.tp_name;
    module.attr(name.substr(name.rfind('.') + 1).c_str()) =
        py::handle(reinterpret_cast<PyObject*>(&type));
}

} // namespace

std::unique_ptr<Converter> quantityConverter(std::string const& dottedName) {
    if (dottedName == types::DataSize::getTypeName()) {
        return std::make_unique<QuantityConverter<types::DataSize>>();
    }
    if (dottedName == types::Time::getTypeName()) {
        return std::make_unique<QuantityConverter<types::Time>>();
    }
    return nullptr;
}

void addQuantities(py::module_& module) {
    add<types::DataSize>(module);
    add<types::Time>(module);
}

} // namespace velum::python
