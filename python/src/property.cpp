#include "property.h"

#include "list.h"
#include "statictype.h"
#include "text.h"

namespace velum::python {

namespace {

struct Descriptor {
    PyObject ob_base;
    Property const* property;
    /// The class of the last object, which is known to have the property. Classes of velum only:
    /// they are never freed.
    PyTypeObject* lastType;
};

Descriptor& descriptorOf(PyObject* self) {
    return *reinterpret_cast<Descriptor*>(self);
}

/// Raises if objects of the type don't have the property, which objects of the last type had.
void requireOwner(Descriptor& descriptor, PyTypeObject* type) {
    Property const& property = *descriptor.property;
    if (PyType_IsSubtype(type, property.owner) == 0) {
        raise(PyExc_TypeError,
              property.qualifiedName + " is no property of " + typeName(type) + " objects.");
    }
    if (type->tp_dealloc == &deallocateHandle) {
        descriptor.lastType = type;
    }
}

/// The object that a property is asked of. Raises if it is none, or of another class or thread.
HandleObject const& ownerOf(Descriptor& descriptor, PyObject* object) {
    if (PyTypeObject* const type = Py_TYPE(object); type != descriptor.lastType) {
        requireOwner(descriptor, type);
    }
    HandleObject const& handle = handleOf(object);
    handle.hold->requireThread();
    return handle;
}

PyObject* getValue(PyObject* self, PyObject* object, PyObject*) {
    return object == nullptr || object == Py_None ? Py_NewRef(self) : readProperty(self, object);
}

void removeValue(HandleObject const& handle, Property const& property, bool isDeletion) {
    if (property.isMandatory && isDeletion) {
        raise(PyExc_AttributeError,
              property.qualifiedName + " is always there and can't be deleted.");
    }
    if (property.isMandatory) {
        raise(PyExc_TypeError,
              property.qualifiedName + " takes " + property.converter->typeName() +
                  ", not None: it is always there.");
    }
    property.record->removeSingleValued(
        handle.object.get(), handle.object.getDeviant(), property.id);
}

PyObject* represent(PyObject* self) {
    return guarded<PyObject*>(nullptr, [&] {
        Property const& property = *descriptorOf(self).property;
        return required(newText("<velum property " + property.qualifiedName + ">"));
    });
}

template <std::string Property::*Text>
PyObject* getText(PyObject* self, void*) {
    return guarded<PyObject*>(
        nullptr, [&] { return required(newText(descriptorOf(self).property->*Text)); });
}

PyObject* getOwner(PyObject* self, void*) {
    return Py_NewRef(reinterpret_cast<PyObject*>(descriptorOf(self).property->owner));
}

PyObject* isReadOnly(PyObject* self, void*) {
    return PyBool_FromLong(descriptorOf(self).property->isReadOnly ? 1 : 0);
}

PyGetSetDef attributes[] = {
    {"__name__", &getText<&Property::name>, nullptr, nullptr, nullptr},
    {"__doc__", &getText<&Property::documentation>, nullptr, nullptr, nullptr},
    {"__objclass__", &getOwner, nullptr, nullptr, nullptr},
    {"metamodel_name",
     &getText<&Property::metamodelName>,
     nullptr,
     "The class and the property as the metamodel spells them.",
     nullptr},
    {"is_read_only", &isReadOnly, nullptr, "Whether the library derives the value.", nullptr},
    {}};

PyMethodDef methods[] = {{"__class_getitem__",
                          &Py_GenericAlias,
                          METH_O | METH_CLASS,
                          "For annotations: Property[Get, Set]."},
                         {}};

} // namespace

PyTypeObject propertyType = [] {
    PyTypeObject type = staticType(
        "velum.Property", sizeof(Descriptor), "A property of a class, as it stands in the class.");
    type.tp_descr_get = &getValue;
    type.tp_descr_set = &writeProperty;
    type.tp_repr = &represent;
    type.tp_getset = attributes;
    type.tp_methods = methods;
    type.tp_flags |= Py_TPFLAGS_DISALLOW_INSTANTIATION;
    return type;
}();

PyObject* readProperty(PyObject* descriptor, PyObject* object) noexcept {
    return guarded<PyObject*>(nullptr, [&] {
        HandleObject const& handle = ownerOf(descriptorOf(descriptor), object);
        Property const& property = *descriptorOf(descriptor).property;
        // What is stored refuses by itself; what is derived may find nothing to derive it from.
        if (property.isReadOnly && !handle.object.isValid()) {
            raise(errorType,
                  property.qualifiedName + " can't be read from an object that no longer exists.");
        }
        if (property.isMany) {
            return newList(handle, property);
        }
        return property.converter->toPython(
            property.record->getSingleValued(
                handle.object.get(), handle.object.getDeviant(), property.id),
            handle.hold);
    });
}

int writeProperty(PyObject* descriptor, PyObject* object, PyObject* value) noexcept {
    return guarded(-1, [&] {
        HandleObject const& handle = ownerOf(descriptorOf(descriptor), object);
        setProperty(handle, *descriptorOf(descriptor).property, value);
        return 0;
    });
}

void setProperty(HandleObject const& handle, Property const& property, PyObject* value) {
    if (property.isReadOnly) {
        raise(PyExc_AttributeError, property.qualifiedName + " is derived and can't be set.");
    }
    if (property.isMany) {
        assignList(handle, property, value);
        return;
    }
    if (value == nullptr || value == Py_None) {
        removeValue(handle, property, value == nullptr);
        return;
    }
    QOB::Object const converted = property.converter->fromPython(value, property.qualifiedName);
    property.record->setSingleValued(
        handle.object.get(), handle.object.getDeviant(), property.id, converted);
}

PyObject* newDescriptor(Property const& property) {
    auto* const self =
        reinterpret_cast<Descriptor*>(required(propertyType.tp_alloc(&propertyType, 0)));
    self->property = &property;
    return reinterpret_cast<PyObject*>(self);
}

Property const* propertyOf(PyObject* descriptor) {
    return isProperty(descriptor) ? descriptorOf(descriptor).property : nullptr;
}

void addProperties(py::module_& module) {
    require(PyType_Ready(&propertyType) == 0);
    module.attr("Property") = py::handle(reinterpret_cast<PyObject*>(&propertyType));
}

} // namespace velum::python
