#include "handle.h"

#include "classes.h"
#include "modelview.h"
#include "property.h"
#include "statictype.h"
#include "text.h"

#include <new>
#include <sstream>
#include <string_view>

namespace velum::python {

namespace {

using Handle = HandleObject;

py::object textOrNone(QOB::String const& text) {
    return text.isValid() ? textToPython(text.view()) : py::none();
}

QOB::ClassObject const& usable(PyObject* self) {
    Handle const& handle = handleOf(self);
    handle.hold->requireThread();
    return handle.object;
}

// What Python calls ----------------------------------------------------------------------------

PyObject* represent(PyObject* self) {
    Handle const& handle = handleOf(self);
    std::string text = "<velum.";
    if (!handle.hold->isHere()) {
        text += classOf(Py_TYPE(self)).name + " of another thread>";
        return textToPython(text).release().ptr();
    }
    try {
        text += QOB::toText(QOB::Object(handle.object));
    } catch (std::exception const&) {
        text += classOf(Py_TYPE(self)).name + " (gone)";
    }
    return textToPython(text + ">").release().ptr();
}

PyObject* compare(PyObject* a, PyObject* b, int operation) {
    if ((operation != Py_EQ && operation != Py_NE) || !isHandle(a) || !isHandle(b)) {
        Py_RETURN_NOTIMPLEMENTED;
    }
    bool const isEqual = handleOf(a).object == handleOf(b).object;
    return PyBool_FromLong((operation == Py_EQ) == isEqual);
}

Py_hash_t hash(PyObject* self) {
    constexpr int alignment = 4;
    auto const address = reinterpret_cast<std::uintptr_t>(handleOf(self).object.get());
    return static_cast<Py_hash_t>(address >> alignment);
}

PyObject* make(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
    return guarded<PyObject*>(nullptr, [&] { return createObject(type, arguments, keywords); });
}

/// The property of a name that the object's class has; null for any other attribute. Borrowed: a
/// descriptor may go while its value is converted, but not what is needed of it from there on.
PyObject* propertyNamed(PyObject* self, PyObject* name) {
    if (PyUnicode_CheckExact(name) == 0) {
        return nullptr;
    }
    PyObject* const found = _PyType_Lookup(Py_TYPE(self), name);
    return found != nullptr && isProperty(found) ? found : nullptr;
}

// Most attributes are properties, which need nothing of what the interpreter's search does besides.
PyObject* getAttribute(PyObject* self, PyObject* name) {
    PyObject* const property = propertyNamed(self, name);
    return property != nullptr ? readProperty(property, self) : PyObject_GenericGetAttr(self, name);
}
int setAttribute(PyObject* self, PyObject* name, PyObject* value) {
    PyObject* const property = propertyNamed(self, name);
    return property != nullptr ? writeProperty(property, self, value)
                               : PyObject_GenericSetAttr(self, name, value);
}

template <auto Read>
PyObject* get(PyObject* self, void*) {
    return guarded<PyObject*>(nullptr, [&] { return Read(self).release().ptr(); });
}

py::object idOf(PyObject* self) {
    QOB::Integer const id = usable(self).getObjectId();
    return id.isValid() ? py::object(py::int_(static_cast<int const&>(id))) : py::none();
}

py::object modelOf(PyObject* self) {
    QOB::ClassObject const& object = usable(self);
    return wrapModel(handleOf(self).hold, object.getDeviant());
}

py::object containerOf(PyObject* self) {
    return py::reinterpret_steal<py::object>(
        wrapNear(usable(self).getContainerQOB(), handleOf(self).hold));
}

py::object contentsOf(PyObject* self) {
    py::list all;
    for (QOB::ClassObject const each : usable(self).getContaineeQOBs()) {
        all.append(py::reinterpret_steal<py::object>(wrapNear(each, handleOf(self).hold)));
    }
    return all;
}

py::object externalIdOf(PyObject* self) {
    QOB::ClassObject const& object = usable(self);
    return object.hasExternalId() ? textOrNone(object.getExternalId()) : py::none();
}

int setExternalId(PyObject* self, PyObject* value, void*) {
    return guarded(-1, [&] {
        QOB::ClassObject const& object = usable(self);
        if (value == nullptr || value == Py_None) {
            object.removeExternalId();
            return 0;
        }
        if (PyUnicode_Check(value) == 0) {
            raise(PyExc_TypeError, "external_id takes a str, not " + typeNameOf(value));
        }
        object.setExternalId(textFromPython(value));
        return 0;
    });
}

py::object uriOf(PyObject* self) {
    QOB::ClassObject const& object = usable(self);
    return object.hasUri() ? textOrNone(object.getUri()) : py::none();
}

py::object exists(PyObject* self) {
    return py::bool_(usable(self).isValid());
}

template <auto Method>
PyObject* call(PyObject* self, PyObject* argument) {
    return guarded<PyObject*>(nullptr, [&] { return Method(self, argument).release().ptr(); });
}

py::object inBranch(PyObject* self, PyObject* branch) {
    QOB::ClassObject const& object = usable(self);
    ModelView const& view = viewOf(branch, "in_branch()");
    if (view.hold.get() != handleOf(self).hold.get()) {
        raise(PyExc_ValueError, "in_branch() takes a branch of the object's own model.");
    }
    return py::reinterpret_steal<py::object>(
        wrap(object.inDeviant(view.deviant), handleOf(self).hold));
}

py::object destroy(PyObject* self, PyObject*) {
    usable(self).destroy();
    return py::none();
}

py::object describe(PyObject* self, PyObject*) {
    std::ostringstream out;
    QOB::print(out, usable(self));
    return textToPython(out.str());
}

py::object refuseCopy(PyObject* self, PyObject*) {
    raise(PyExc_TypeError,
          typeNameOf(self) + " objects belong to their model and can't be copied or pickled. "
                             "velum.save() and velum.write() store a whole model.");
}

PyGetSetDef attributes[] = {
    {"id", &get<idOf>, nullptr, "The number of the object in its model.", nullptr},
    {"model",
     &get<modelOf>,
     nullptr,
     "The model, or the branch, in which the object is seen.",
     nullptr},
    {"container", &get<containerOf>, nullptr, "The object that contains this one.", nullptr},
    {"contents", &get<contentsOf>, nullptr, "All objects that this one contains.", nullptr},
    {"external_id",
     &get<externalIdOf>,
     &setExternalId,
     "The name in an outside system; of an object that was read from a file, its path there.",
     nullptr},
    {"uri", &get<uriOf>, nullptr, "The URI of the model with the id behind it.", nullptr},
    {"exists",
     &get<exists>,
     nullptr,
     "Whether the object is still there, in the model or branch in which it is seen.",
     nullptr},
    {}};

PyMethodDef methods[] = {
    {"in_branch", &call<inBranch>, METH_O, "The same object as seen in a branch, or in the model."},
    {"destroy", &call<destroy>, METH_NOARGS, "Destroys the object with all that it contains."},
    {"describe", &call<describe>, METH_NOARGS, "All values of the object and of what it contains."},
    {"__reduce_ex__", &call<refuseCopy>, METH_O, "Raises TypeError."},
    {}};

} // namespace

PyTypeObject objectType = [] {
    PyTypeObject type = staticType(
        "velum.Object",
        sizeof(Handle),
        "An object of a model: the base of all classes. It shows the object; two of them are equal "
        "if they show the same one, in whatever branch.");
    type.tp_flags |= Py_TPFLAGS_BASETYPE;
    type.tp_weaklistoffset = sizeof(PyObject);
    type.tp_new = &make;
    type.tp_dealloc = &deallocateHandle;
    type.tp_repr = &represent;
    type.tp_richcompare = &compare;
    type.tp_hash = &hash;
    type.tp_getattro = &getAttribute;
    type.tp_setattro = &setAttribute;
    type.tp_getset = attributes;
    type.tp_methods = methods;
    return type;
}();

void deallocateHandle(PyObject* self) {
    PyTypeObject* const type = Py_TYPE(self);
    Handle& handle = handleOf(self);
    if (handle.weakReferences != nullptr) {
        PyObject_ClearWeakRefs(self);
    }
    {
        // The object goes before its model may.
        HoldRef const last = std::move(handle.hold);
        handle.object.~ClassObject();
        handle.hold.~HoldRef();
    }
    type->tp_free(self);
    if (PyType_HasFeature(type, Py_TPFLAGS_HEAPTYPE)) {
        Py_DECREF(type);
    }
}

PyObject* wrap(QOB::ClassObject object, HoldRef hold) {
    PyTypeObject* const type = typeOf(*object.get());
    return wrapAs(type, std::move(object), std::move(hold));
}

PyObject* wrapAs(PyTypeObject* type, QOB::ClassObject object, HoldRef hold) {
    auto* const self = reinterpret_cast<Handle*>(required(type->tp_alloc(type, 0)));
    new (&self->object) QOB::ClassObject(std::move(object));
    new (&self->hold) HoldRef(std::move(hold));
    return reinterpret_cast<PyObject*>(self);
}

PyObject* wrapNear(QOB::ClassObject object, HoldRef const& near) {
    if (object.get() == nullptr) {
        Py_RETURN_NONE;
    }
    // What is gone has no model to keep.
    if (object->getRootDeviant() == near->root() || !object.isValid()) {
        return wrap(std::move(object), near);
    }
    HoldRef other(ModelHold::of(*object.get(), object.getDeviant()));
    return wrap(std::move(object), std::move(other));
}

std::string typeName(PyTypeObject* type) {
    bool const isMade = type != &objectType && type->tp_dealloc == &deallocateHandle;
    return isMade ? std::string("velum.") + type->tp_name : type->tp_name;
}

void addHandles(py::module_& module) {
    require(PyType_Ready(&objectType) == 0);
    module.attr("Object") = py::handle(reinterpret_cast<PyObject*>(&objectType));
}

} // namespace velum::python
