#include "classes.h"

#include "modelview.h"
#include "text.h"

#include <deque>
#include <unordered_map>
#include <vector>

namespace velum::python {

namespace {

/// All classes. Never freed, like the types.
struct Classes {
    std::deque<ClassEntry> entries;
    std::deque<Property> properties;
    std::vector<std::unique_ptr<Converter>> objectConverters;
    std::unordered_map<void const*, ClassEntry*> byLive;
    std::unordered_map<std::string, ClassEntry*> byDottedName;
    std::unordered_map<PyTypeObject*, ClassEntry*> byType;
    std::unordered_map<void const*, Property const*> byLiveProperty;
    /// By the address of the name that an object of the class gives.
    std::unordered_map<char const*, PyTypeObject*> byNameAddress;
};

Classes& classes() {
    static auto& all = *new Classes;
    return all;
}

// Creation of objects ---------------------------------------------------------------------------

ClassEntry const* find(PyTypeObject* type) {
    auto const found = classes().byType.find(type);
    return found != classes().byType.end() ? found->second : nullptr;
}

Property const& keywordProperty(ClassEntry const& entry, PyObject* keyword) {
    auto const attribute = py::reinterpret_steal<py::object>(
        PyObject_GetAttr(reinterpret_cast<PyObject*>(entry.type), keyword));
    Property const* const property = attribute ? propertyOf(attribute.ptr()) : nullptr;
    if (property == nullptr) {
        PyErr_Clear();
        raise(PyExc_TypeError,
              "velum." + entry.name + " has no property " + stringFromPython(keyword) + ".");
    }
    return *property;
}

/// What a call was given.
struct Arguments {
    PyObject* const* positional;
    Py_ssize_t count;
    std::vector<std::pair<PyObject*, PyObject*>> keywords;
};

void setProperties(ClassEntry const& entry, HandleObject const& handle, Arguments const& given) {
    if (given.count > 1 && given.positional[1] != Py_None) {
        if (entry.nameProperty == nullptr) {
            raise(PyExc_TypeError, "velum." + entry.name + " objects have no name.");
        }
        setProperty(handle, *entry.nameProperty, given.positional[1]);
    }
    for (auto const& [keyword, value] : given.keywords) {
        setProperty(handle, keywordProperty(entry, keyword), value);
    }
}

PyObject* create(ClassEntry const& entry, PyTypeObject* type, Arguments const& given) {
    if (entry.record == nullptr || entry.record->create == nullptr) {
        raise(PyExc_TypeError,
              "velum." + entry.name + " is abstract: it has no objects of its own.");
    }
    if (given.count < 1 || given.count > 2) {
        raise(PyExc_TypeError,
              entry.call + " takes a model and, if wanted, a name; other properties by keyword.");
    }
    ModelView const& view = viewOf(given.positional[0], entry.call.c_str());
    QOB::Model const model = view.handle();
    QOB::ClassObject const object(entry.record->create(model, model.allocateObjectId()));
    auto made = py::reinterpret_steal<py::object>(wrapAs(type, object, view.hold));
    if (given.count == 2 || !given.keywords.empty()) {
        try {
            setProperties(entry, handleOf(made.ptr()), given);
        } catch (...) {
            object.destroy(); // nothing half-done
            throw;
        }
    }
    return made.release().ptr();
}

PyObject* construct(PyObject* callable,
                    PyObject* const* arguments,
                    std::size_t countAndFlag,
                    PyObject* keywordNames) {
    return guarded<PyObject*>(nullptr, [&] {
        auto* const type = reinterpret_cast<PyTypeObject*>(callable);
        Arguments given{arguments, PyVectorcall_NARGS(countAndFlag), {}};
        Py_ssize_t const count = keywordNames != nullptr ? PyTuple_GET_SIZE(keywordNames) : 0;
        for (Py_ssize_t i = 0; i < count; ++i) {
            given.keywords.emplace_back(PyTuple_GET_ITEM(keywordNames, i),
                                        arguments[given.count + i]);
        }
        return create(*find(type), type, given);
    });
}

// Creation of classes ---------------------------------------------------------------------------

std::string spellingOf(std::string const& name, bool isMany) {
    return py::str(py::module_::import("velum._names").attr("python_name")(name, isMany));
}

std::string textOf(QOB::String const& text) {
    return text.isValid() ? std::string(text) : std::string();
}

std::string classDocumentation(QOB::ImmutableClass const& live, std::string const& dotted) {
    std::string text = "The metaclass " + dotted + ".";
    for (QOB::String const& comment : live.getComments()) {
        text += "\n\n" + textOf(comment);
    }
    return text;
}

/// Makes the types, bases first, then their properties, which refer to each other's types.
class ClassMaker {
public:
    explicit ClassMaker(py::module_& module) : module_(module) {}

    void addPackage(QOB::ImmutablePackage const& package) {
        for (QOB::ImmutableType const type : package.getOwnedTypes()) {
            if (QOB::ImmutableClass const live(type); live.isValid()) {
                if (live.internal_binding().methods != nullptr) {
                    addClass(live);
                }
            } else {
                converterOf(type); // also of a data type that no property has
            }
        }
        for (QOB::ImmutablePackage const nested : package.getNestedPackages()) {
            addPackage(nested);
        }
    }

    void addProperties() {
        for (auto const& [live, entry] : made_) {
            for (QOB::ImmutableProperty const property : live.getOwnedAttributes()) {
                addProperty(*entry, property);
            }
            PyType_Modified(entry->type);
        }
        for (auto const& [live, entry] : made_) {
            auto const name = py::reinterpret_steal<py::object>(
                PyObject_GetAttrString(reinterpret_cast<PyObject*>(entry->type), "name"));
            entry->nameProperty = name ? propertyOf(name.ptr()) : nullptr;
            PyErr_Clear();
        }
    }

private:
    ClassEntry* addClass(QOB::ImmutableClass const& live) {
        if (auto const known = classes().byLive.find(live.get()); known != classes().byLive.end()) {
            return known->second;
        }
        std::string const dotted = dottedName(live);
        ClassEntry& entry = classes().entries.emplace_back();
        entry.name = std::string(live.getName());
        entry.call = "velum." + entry.name + "()";
        entry.record = live.internal_binding().methods;
        entry.type = newType(entry, live, dotted);
        classes().byLive.emplace(live.get(), &entry);
        classes().byDottedName.emplace(dotted, &entry);
        classes().byType.emplace(entry.type, &entry);
        made_.emplace_back(live, &entry);
        return &entry;
    }

    py::tuple basesOf(QOB::ImmutableClass const& live) {
        py::list bases;
        for (QOB::ImmutableClass const super : live.getSupers()) {
            // The kernel's own classes are what every object is.
            PyTypeObject* const type =
                super.getPackage() == kernel_ ? &objectType : addClass(super)->type;
            bases.append(py::handle(reinterpret_cast<PyObject*>(type)));
        }
        if (bases.empty()) {
            bases.append(py::handle(reinterpret_cast<PyObject*>(&objectType)));
        }
        return bases;
    }

    PyTypeObject*
    newType(ClassEntry const& entry, QOB::ImmutableClass const& live, std::string const& dotted) {
        if (py::hasattr(module_, entry.name.c_str())) {
            raise(PyExc_ImportError, "Two of velum's classes have the name " + entry.name + ".");
        }
        py::dict members;
        members["__module__"] = "velum";
        members["__doc__"] = textToPython(classDocumentation(live, dotted));
        members["__slots__"] = py::tuple();
        py::handle const metatype(reinterpret_cast<PyObject*>(&PyType_Type));
        py::object made = metatype(entry.name, basesOf(live), members);
        module_.attr(entry.name.c_str()) = made;
        auto* const type = reinterpret_cast<PyTypeObject*>(made.release().ptr());
        // Shorter ways than those of a class that a program makes.
        type->tp_vectorcall = &construct;
        type->tp_dealloc = &deallocateHandle;
        return type;
    }

    void addProperty(ClassEntry const& entry, QOB::ImmutableProperty const& live) {
        QOB::PropertyBinding const binding = live->internal_binding();
        if (binding.methods == nullptr) {
            return;
        }
        bool const isMany = live.isMultiValued();
        std::string const metamodelName(live.getName());
        Converter const& converter = converterFor(live.getType());
        std::string const name = spellingOf(metamodelName, isMany);
        Property const& property = classes().properties.emplace_back(
            Property{.record = binding.methods,
                     .id = binding.id,
                     .converter = &converter,
                     .owner = entry.type,
                     .isMany = isMany,
                     .isUnique = live.isUnique(),
                     .isReadOnly = live.isDerived() && live.isReadOnly(),
                     .isMandatory = !isMany && !converter.isForObjects() &&
                                    static_cast<int const&>(live.getLower()) > 0,
                     .name = name,
                     .qualifiedName = entry.name + "." + name,
                     .metamodelName = entry.name + "." + metamodelName,
                     .documentation = documentationOf(entry, live, converter)});
        requireFree(entry, property);
        classes().byLiveProperty.emplace(live.get(), &property);
        py::object const descriptor = py::reinterpret_steal<py::object>(newDescriptor(property));
        require(PyDict_SetItemString(entry.type->tp_dict, name.c_str(), descriptor.ptr()) == 0);
        if (name == "name") {
            py::tuple const positional = py::make_tuple(name);
            require(PyDict_SetItemString(entry.type->tp_dict, "__match_args__", positional.ptr()) ==
                    0);
        }
    }

    /// A property must not hide what every object has.
    static void requireFree(ClassEntry const& entry, Property const& property) {
        bool const isTaken =
            PyDict_GetItemString(objectType.tp_dict, property.name.c_str()) != nullptr ||
            PyDict_GetItemString(entry.type->tp_dict, property.name.c_str()) != nullptr;
        if (isTaken) {
            raise(PyExc_ImportError,
                  "The name of the property " + property.metamodelName +
                      " is taken in Python: " + property.qualifiedName + ".");
        }
    }

    static std::string documentationOf(ClassEntry const& entry,
                                       QOB::ImmutableProperty const& live,
                                       Converter const& converter) {
        int const upper = live.getUpper();
        std::string text = entry.name + "." + std::string(live.getName()) + ": ";
        text += converter.typeName() + ", " + std::to_string(static_cast<int>(live.getLower()));
        text += upper == QOB::ImmutableProperty::Unbounded ? "..*" : ".." + std::to_string(upper);
        text += live.isDerived() ? ", derived." : ".";
        std::string const documentation = textOf(live.getDocumentation());
        return documentation.empty() ? text : text + "\n\n" + documentation;
    }

    Converter const& converterFor(QOB::ImmutableType const& type) {
        QOB::ImmutableClass const live(type);
        if (!live.isValid()) {
            return converterOf(type);
        }
        auto& converter = converters_[live.get()];
        if (converter == nullptr) {
            auto const known = classes().byLive.find(live.get());
            classes().objectConverters.push_back(objectConverter(
                known != classes().byLive.end() ? known->second->type : &objectType));
            converter = classes().objectConverters.back().get();
        }
        return *converter;
    }

    py::module_& module_;
    QOB::ImmutablePackage kernel_ = QOB::ImmutableClass::MetaClass().getPackage();
    std::vector<std::pair<QOB::ImmutableClass, ClassEntry*>> made_;
    std::unordered_map<void const*, Converter const*> converters_;
};

} // namespace

void addClasses(py::module_& module) {
    ClassEntry& base = classes().entries.emplace_back();
    base.name = "Object";
    base.type = &objectType;
    classes().byType.emplace(base.type, &base);
    ClassMaker maker(module);
    QOB::ImmutablePackage const kernel = QOB::ImmutableClass::MetaClass().getPackage();
    for (QOB::ClassObject const object :
         QOB::DomainRegistry::instance()->getMetaRegistry().getRootObjectsWithoutAssociation()) {
        QOB::ImmutablePackage const package(object);
        if (package.isValid() && !package.hasParent() && package != kernel) {
            maker.addPackage(package);
        }
    }
    maker.addProperties();
}

std::string pythonNameOf(QOB::ImmutableProperty const& live) {
    auto const known = classes().byLiveProperty.find(live.get());
    return known != classes().byLiveProperty.end()
               ? known->second->name
               : spellingOf(std::string(live.getName()), live.isMultiValued());
}

PyTypeObject* typeOf(QOB::NSInterface::ClassObjectIntf const& object) {
    char const* const name = object.getLumvoName(false);
    auto const found = classes().byNameAddress.find(name);
    if (found != classes().byNameAddress.end()) {
        return found->second;
    }
    auto const entry = classes().byDottedName.find(name);
    PyTypeObject* const type =
        entry != classes().byDottedName.end() ? entry->second->type : &objectType;
    classes().byNameAddress.emplace(name, type);
    return type;
}

ClassEntry const& classOf(PyTypeObject* type) {
    for (PyTypeObject* each = type; each != nullptr; each = each->tp_base) {
        if (ClassEntry const* const entry = find(each)) {
            return *entry;
        }
    }
    return classes().entries.front();
}

PyObject* createObject(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
    Arguments given{PySequence_Fast_ITEMS(arguments), PyTuple_GET_SIZE(arguments), {}};
    PyObject* keyword = nullptr;
    PyObject* value = nullptr;
    for (Py_ssize_t at = 0; keywords != nullptr && PyDict_Next(keywords, &at, &keyword, &value);) {
        given.keywords.emplace_back(keyword, value);
    }
    return create(classOf(type), type, given);
}

} // namespace velum::python
