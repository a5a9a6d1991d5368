#include "list.h"

#include "listview.h"
#include "statictype.h"
#include "text.h"

#include <algorithm>
#include <new>

namespace velum::python {

namespace {

struct List {
    PyObject ob_base;
    PyObject* weakReferences;
    ListView view;
};

bool isList(PyObject* value) {
    return PyObject_TypeCheck(value, &listType) != 0;
}

ListView const& viewIn(PyObject* self) {
    ListView const& view = reinterpret_cast<List*>(self)->view;
    view.hold()->requireThread();
    return view;
}

void deallocate(PyObject* self) {
    auto& list = *reinterpret_cast<List*>(self);
    if (list.weakReferences != nullptr) {
        PyObject_ClearWeakRefs(self);
    }
    {
        HoldRef const last = list.view.hold(); // the values go before their model may
        list.view.~ListView();
    }
    Py_TYPE(self)->tp_free(self);
}

Py_ssize_t size(PyObject* self) {
    return guarded<Py_ssize_t>(-1, [&] { return viewIn(self).size(); });
}

[[noreturn]] void failIndex(ListView const& view) {
    raise(PyExc_IndexError, view.property().qualifiedName + " has no value at this index.");
}

/// For loops, which end by it: without a text, so that ending costs little.
PyObject* item(PyObject* self, Py_ssize_t index) {
    return guarded<PyObject*>(nullptr, [&]() -> PyObject* {
        ListView const& view = viewIn(self);
        if (index < 0 || index >= view.size()) {
            PyErr_SetNone(PyExc_IndexError);
            return nullptr;
        }
        return view.at(index);
    });
}

Py_ssize_t indexFrom(ListView const& view, PyObject* key) {
    Py_ssize_t const index = PyNumber_AsSsize_t(key, PyExc_IndexError);
    require(index != -1 || PyErr_Occurred() == nullptr);
    Py_ssize_t const count = view.size();
    Py_ssize_t const fromStart = index < 0 ? index + count : index;
    if (fromStart < 0 || fromStart >= count) {
        failIndex(view);
    }
    return fromStart;
}

/// The places that a slice stands for.
struct Slice {
    Py_ssize_t start = 0;
    Py_ssize_t stop = 0;
    Py_ssize_t step = 1;
    Py_ssize_t count = 0;

    Slice(ListView const& view, PyObject* key) {
        require(PySlice_Unpack(key, &start, &stop, &step) == 0);
        count = PySlice_AdjustIndices(view.size(), &start, &stop, step);
    }
    bool has(Py_ssize_t index) const {
        Py_ssize_t const steps = (index - start) / step;
        return steps >= 0 && steps < count && start + steps * step == index;
    }
};

[[noreturn]] void failKey(ListView const& view, PyObject* key) {
    raise(PyExc_TypeError,
          view.property().qualifiedName + " is indexed by int and slice, not by " +
              typeNameOf(key) + ".");
}

PyObject* subscript(PyObject* self, PyObject* key) {
    return guarded<PyObject*>(nullptr, [&] {
        ListView const& view = viewIn(self);
        if (PyIndex_Check(key) != 0) {
            return view.at(indexFrom(view, key));
        }
        if (PySlice_Check(key) == 0) {
            failKey(view, key);
        }
        py::list values;
        Slice const slice(view, key);
        for (Py_ssize_t i = 0; i != slice.count; ++i) {
            values.append(py::reinterpret_steal<py::object>(view.at(slice.start + i * slice.step)));
        }
        return values.release().ptr();
    });
}

void eraseSlice(ListView const& view, Slice const& slice) {
    ListView::Values kept;
    ListView::Values const all = view.all();
    for (std::size_t i = 0; i != all.size(); ++i) {
        if (!slice.has(static_cast<Py_ssize_t>(i))) {
            kept.push_back(all[i]);
        }
    }
    view.assign(kept);
}

void assignSlice(ListView const& view, Slice const& slice, ListView::Values const& values) {
    ListView::Values all = view.all();
    if (slice.step == 1) {
        auto const first = all.begin() + slice.start;
        all.erase(first, first + slice.count);
        all.insert(all.begin() + slice.start, values.begin(), values.end());
    } else if (static_cast<Py_ssize_t>(values.size()) != slice.count) {
        raise(PyExc_ValueError,
              "A slice with steps takes as many values as it has places: " +
                  std::to_string(slice.count) + ", not " + std::to_string(values.size()) + ".");
    } else {
        for (std::size_t i = 0; i != values.size(); ++i) {
            Py_ssize_t const at = slice.start + static_cast<Py_ssize_t>(i) * slice.step;
            all[static_cast<std::size_t>(at)] = values[i];
        }
    }
    view.assign(all);
}

void assignIndex(ListView const& view, PyObject* key, PyObject* value) {
    if (value == nullptr) {
        Py_ssize_t const index = indexFrom(view, key);
        view.erase(index, index + 1);
    } else {
        QOB::Generic::Ref const converted = view.valueOf(value);
        view.replace(indexFrom(view, key), converted);
    }
}

// What is put in comes before places are counted: to convert it may run code that changes the list.
int assignSubscript(PyObject* self, PyObject* key, PyObject* value) {
    return guarded(-1, [&] {
        ListView const& view = viewIn(self);
        if (PyIndex_Check(key) != 0) {
            assignIndex(view, key, value);
        } else if (PySlice_Check(key) == 0) {
            failKey(view, key);
        } else if (value == nullptr) {
            eraseSlice(view, Slice(view, key));
        } else {
            ListView::Values const values = view.valuesOf(value);
            assignSlice(view, Slice(view, key), values);
        }
        return 0;
    });
}

/// Whether the value is one that the list could have: others are in no list.
bool couldBeIn(ListView const& view, PyObject* value, QOB::Generic::Ref& found) {
    try {
        found = view.valueOf(value);
        return true;
    } catch (py::error_already_set const&) {
        return false;
    } catch (QOB::Exception const&) {
        return false; // a text that is no value
    }
}

int contains(PyObject* self, PyObject* value) {
    return guarded(-1, [&] {
        ListView const& view = viewIn(self);
        QOB::Generic::Ref found;
        return couldBeIn(view, value, found) && view.contains(found) ? 1 : 0;
    });
}

/// A list of Python's own.
PyObject* concatenate(PyObject* self, PyObject* iterable) {
    return guarded<PyObject*>(nullptr, [&] {
        auto const all = py::reinterpret_steal<py::object>(required(PySequence_List(self)));
        return required(PySequence_InPlaceConcat(all.ptr(), iterable));
    });
}

PyObject* extendInPlace(PyObject* self, PyObject* iterable) {
    return guarded<PyObject*>(nullptr, [&] {
        ListView const& view = viewIn(self);
        ListView::Values const values = view.valuesOf(iterable);
        view.insert(view.size(), values);
        return Py_NewRef(self);
    });
}

PyObject* represent(PyObject* self) {
    return guarded<PyObject*>(nullptr, [&] {
        auto const values = py::reinterpret_steal<py::object>(required(PySequence_List(self)));
        return required(PyObject_Repr(values.ptr()));
    });
}

/// With lists of either kind, by values.
PyObject* compare(PyObject* a, PyObject* b, int operation) {
    bool const isComparison = operation == Py_EQ || operation == Py_NE;
    if (!isComparison || !isList(a) || (!isList(b) && PyList_Check(b) == 0)) {
        Py_RETURN_NOTIMPLEMENTED;
    }
    return guarded<PyObject*>(nullptr, [&] {
        auto const first = py::reinterpret_steal<py::object>(required(PySequence_List(a)));
        auto const second = py::reinterpret_steal<py::object>(required(PySequence_List(b)));
        return required(PyObject_RichCompare(first.ptr(), second.ptr(), operation));
    });
}

// The methods of collections.abc.MutableSequence ------------------------------------------------

template <auto Method>
PyObject* call(PyObject* self, PyObject* const* arguments, Py_ssize_t count) {
    return guarded<PyObject*>(
        nullptr, [&] { return Method(viewIn(self), arguments, count).release().ptr(); });
}

void requireCount(Py_ssize_t count, Py_ssize_t least, Py_ssize_t most, char const* method) {
    if (count < least || count > most) {
        raise(PyExc_TypeError,
              std::string(method) + "() takes " + std::to_string(most) +
                  (most == 1 ? " argument, not " : " arguments, not ") + std::to_string(count) +
                  ".");
    }
}

py::object append(ListView const& view, PyObject* const* arguments, Py_ssize_t count) {
    requireCount(count, 1, 1, "append");
    ListView::Values const values{view.valueOf(arguments[0])};
    view.insert(view.size(), values);
    return py::none();
}

py::object insert(ListView const& view, PyObject* const* arguments, Py_ssize_t count) {
    requireCount(count, 2, 2, "insert");
    ListView::Values const values{view.valueOf(arguments[1])};
    Py_ssize_t index = PyNumber_AsSsize_t(arguments[0], nullptr);
    require(index != -1 || PyErr_Occurred() == nullptr);
    Py_ssize_t const end = view.size();
    index = std::clamp<Py_ssize_t>(index < 0 ? index + end : index, 0, end);
    view.insert(index, values);
    return py::none();
}

py::object extend(ListView const& view, PyObject* const* arguments, Py_ssize_t count) {
    requireCount(count, 1, 1, "extend");
    ListView::Values const values = view.valuesOf(arguments[0]);
    view.insert(view.size(), values);
    return py::none();
}

py::object pop(ListView const& view, PyObject* const* arguments, Py_ssize_t count) {
    requireCount(count, 0, 1, "pop");
    py::int_ const last(-1);
    Py_ssize_t const index = indexFrom(view, count == 0 ? last.ptr() : arguments[0]);
    auto value = py::reinterpret_steal<py::object>(view.at(index));
    view.erase(index, index + 1);
    return value;
}

py::object removeValue(ListView const& view, PyObject* const* arguments, Py_ssize_t count) {
    requireCount(count, 1, 1, "remove");
    QOB::Generic::Ref value;
    Py_ssize_t const index = couldBeIn(view, arguments[0], value) ? view.find(value) : -1;
    if (index < 0) {
        raise(PyExc_ValueError, view.property().qualifiedName + " doesn't hold this value.");
    }
    view.erase(index, index + 1);
    return py::none();
}

py::object clear(ListView const& view, PyObject* const*, Py_ssize_t count) {
    requireCount(count, 0, 0, "clear");
    view.erase(0, view.size());
    return py::none();
}

py::object reverse(ListView const& view, PyObject* const*, Py_ssize_t count) {
    requireCount(count, 0, 0, "reverse");
    ListView::Values values = view.all();
    std::reverse(values.begin(), values.end());
    view.assign(values);
    return py::none();
}

/// Where a search begins or ends, as Python's lists read it.
Py_ssize_t boundFrom(PyObject* value, Py_ssize_t end) {
    Py_ssize_t const bound = PyNumber_AsSsize_t(value, nullptr);
    require(bound != -1 || PyErr_Occurred() == nullptr);
    return std::clamp<Py_ssize_t>(bound < 0 ? bound + end : bound, 0, end);
}

py::object index(ListView const& view, PyObject* const* arguments, Py_ssize_t count) {
    requireCount(count, 1, 3, "index");
    Py_ssize_t const end = view.size();
    Py_ssize_t const first = count > 1 ? boundFrom(arguments[1], end) : 0;
    Py_ssize_t const last = count > 2 ? boundFrom(arguments[2], end) : end;
    QOB::Generic::Ref value;
    Py_ssize_t const found = couldBeIn(view, arguments[0], value) ? view.find(value, first) : -1;
    if (found < 0 || found >= last) {
        raise(PyExc_ValueError, view.property().qualifiedName + " doesn't hold this value.");
    }
    return py::int_(found);
}

py::object countValue(ListView const& view, PyObject* const* arguments, Py_ssize_t count) {
    requireCount(count, 1, 1, "count");
    QOB::Generic::Ref value;
    Py_ssize_t found = 0;
    if (couldBeIn(view, arguments[0], value)) {
        for (Py_ssize_t at = view.find(value); at >= 0; at = view.find(value, at + 1)) {
            ++found;
        }
    }
    return py::int_(found);
}

PyObject* reversed(PyObject* self, PyObject*) {
    return guarded<PyObject*>(nullptr, [&] {
        auto const values = py::reinterpret_steal<py::object>(required(PySequence_List(self)));
        return values.attr("__reversed__")().release().ptr();
    });
}

PyObject* refuseCopy(PyObject*, PyObject*) {
    return guarded<PyObject*>(nullptr, []() -> PyObject* {
        raise(PyExc_TypeError,
              "velum.List shows the values of an object and can't be copied or pickled; list() "
              "makes a list of the values.");
    });
}

template <auto Method>
PyMethodDef method(char const* name, char const* documentation) {
    auto* const function = reinterpret_cast<PyCFunction>(reinterpret_cast<void*>(&call<Method>));
    return {name, function, METH_FASTCALL, documentation};
}

PyMethodDef methods[] = {
    method<append>("append", "Adds a value at the end."),
    method<insert>("insert", "Inserts a value before an index."),
    method<extend>("extend", "Adds all values of an iterable, or none if one is refused."),
    method<pop>("pop", "Removes the value at an index, the last one by default; returns it."),
    method<removeValue>("remove", "Removes the first of a value."),
    method<clear>("clear", "Removes all values."),
    method<reverse>("reverse", "Reverses the order."),
    method<index>("index", "The first index of a value."),
    method<countValue>("count", "How often a value is there."),
    {"__reversed__", &reversed, METH_NOARGS, "The values from the last to the first."},
    {"__reduce_ex__", &refuseCopy, METH_O, "Raises TypeError."},
    {"__class_getitem__", &Py_GenericAlias, METH_O | METH_CLASS, "For annotations: List[T]."},
    {}};

PySequenceMethods sequence = [] {
    PySequenceMethods all = {};
    all.sq_length = &size;
    all.sq_item = &item;
    all.sq_contains = &contains;
    all.sq_concat = &concatenate;
    all.sq_inplace_concat = &extendInPlace;
    return all;
}();
PyMappingMethods mapping = {&size, &subscript, &assignSubscript};

} // namespace

PyTypeObject listType = [] {
    PyTypeObject type = staticType(
        "velum.List",
        sizeof(List),
        "The values of a property with many, as they are now and will be: a mutable sequence.");
    type.tp_flags |= Py_TPFLAGS_SEQUENCE | Py_TPFLAGS_DISALLOW_INSTANTIATION;
    type.tp_weaklistoffset = sizeof(PyObject);
    type.tp_dealloc = &deallocate;
    type.tp_repr = &represent;
    type.tp_richcompare = &compare;
    type.tp_hash = &PyObject_HashNotImplemented;
    type.tp_as_sequence = &sequence;
    type.tp_as_mapping = &mapping;
    type.tp_iter = &PySeqIter_New;
    type.tp_methods = methods;
    return type;
}();

PyObject* newList(HandleObject const& handle, Property const& property) {
    ListView view(handle.object, handle.hold, property);
    auto* const self = reinterpret_cast<List*>(required(listType.tp_alloc(&listType, 0)));
    new (&self->view) ListView(std::move(view));
    return reinterpret_cast<PyObject*>(self);
}

void assignList(HandleObject const& handle, Property const& property, PyObject* values) {
    ListView const view(handle.object, handle.hold, property);
    if (values == nullptr) {
        view.erase(0, view.size());
    } else if (!isList(values) || !viewIn(values).isOfSameValues(view)) {
        view.assign(view.valuesOf(values));
    }
}

void addLists(py::module_& module) {
    require(PyType_Ready(&listType) == 0);
    module.attr("List") = py::handle(reinterpret_cast<PyObject*>(&listType));
}

} // namespace velum::python
