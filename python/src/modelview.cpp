#include "modelview.h"

#include "classes.h"
#include "handle.h"
#include "model/objects.h"
#include "text.h"
#include "transaction.h"

#include <string>
#include <vector>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfactory.h>

namespace velum::python {

namespace {

namespace types = Zorvane::metamodel::types;

ModelView newModel(py::object const& uri) {
    HoldRef hold(ModelHold::adopt(types::NSInterface::FactoryIntf::createNewModel()));
    ModelView view{hold, hold->root()};
    if (!uri.is_none()) {
        view.handle().setUri(textFromPython(py::str(uri).ptr()));
    }
    return view;
}

py::object wrapIn(ModelView const& view, QOB::ClassObject const& object) {
    return py::reinterpret_steal<py::object>(wrapNear(object, view.hold));
}

py::list objectsOf(ModelView const& view, py::type const& of) {
    auto* const wanted = reinterpret_cast<PyTypeObject*>(of.ptr());
    if (PyType_IsSubtype(wanted, &objectType) == 0) {
        raise(PyExc_TypeError, "objects() takes a class of velum, not " + typeName(wanted) + ".");
    }
    py::list all;
    for (QOB::ClassObject const each : view.handle().getRootObjectsWithoutAssociation()) {
        if (PyType_IsSubtype(typeOf(*each.get()), wanted) != 0) {
            all.append(wrapIn(view, each));
        }
    }
    return all;
}

py::object findId(ModelView const& view, int id) {
    return wrapIn(view, view.handle().findObject(id));
}

py::object findPath(ModelView const& view, std::string const& path) {
    std::vector<QOB::ClassObject> const found = model::objectsAt(view.handle(), path);
    bool const isThere = found.size() == 1 && model::pathOf(found.front()) == path;
    return isThere ? wrapIn(view, found.front()) : py::none();
}

py::object uriOf(ModelView const& view) {
    QOB::String const uri = view.handle().getUri();
    return uri.isValid() ? textToPython(uri.view()) : py::none();
}

std::string shortText(ModelView const& view) {
    if (!view.hold->isHere()) {
        return "of another thread";
    }
    if (view.hold->isDestroyed() || !view.deviant.isValid()) {
        return "(gone)";
    }
    QOB::Model const model = view.handle();
    return std::string(model.getUri()) + " with " +
           std::to_string(model.getRootObjectsWithoutAssociation().size()) + " objects";
}

py::object represent(ModelView const& view, char const* name) {
    return textToPython("<velum." + std::string(name) + " " + shortText(view) + ">");
}

bool isEqual(ModelView const& view, py::object const& other) {
    return py::isinstance<ModelView>(other) &&
           other.cast<ModelView const&>().deviant == view.deviant;
}

ModelHold::Switches& switchesOf(ModelView const& view) {
    view.hold->requireThread();
    return view.hold->switchesOf(view.deviant);
}

void setUndoEnabled(ModelView const& view, bool isEnabled) {
    view.handle().setUndoEnabled(isEnabled);
    switchesOf(view).isUndoEnabled = isEnabled;
}

void setReadOnly(ModelView const& view, bool isReadOnly) {
    view.handle().setReadOnly(isReadOnly);
    switchesOf(view).isReadOnly = isReadOnly;
}

BranchView newBranch(ModelView const& view) {
    return {{view.hold, view.handle().createDeviant()}};
}

void merge(ModelView const& view, ModelView const& source) {
    if (source.hold.get() != view.hold.get()) {
        raise(PyExc_ValueError, "merge() takes a branch of the same model.");
    }
    view.handle().mergeDeviant(source.deviant);
}

void removeBranch(BranchView const& view) {
    view.hold->requireThread();
    view.hold->model().removeDeviant(view.deviant);
}

using ModelClass = py::class_<ModelView>;

void addObjectMethods(ModelClass& model) {
    model.def(py::init(&newModel), py::arg("uri") = py::none(), "A new, empty model.")
        .def("objects",
             &objectsOf,
             py::arg("of") =
                 py::reinterpret_borrow<py::type>(reinterpret_cast<PyObject*>(&objectType)),
             "All objects of a class and of those below it, in the order of their creation.")
        .def("find", &findId, py::arg("id"), "The object with an id; None if there is none.")
        .def("find_path",
             &findPath,
             py::arg("path"),
             "The object that came from a path of the files; None if there is none.");
}

void addStepMethods(ModelClass& model) {
    model
        .def("transaction",
             &newTransaction,
             "For a with statement: its changes are one step; an exception takes them back.")
        .def(
            "undo",
            [](ModelView const& view) { return view.handle().undo(); },
            "Takes the last step back; whether there was one.")
        .def(
            "redo",
            [](ModelView const& view) { return view.handle().redo(); },
            "Takes the last undo back; whether there was one.")
        .def("branch", &newBranch, "A new view of the same objects, to be changed by itself.")
        .def("merge", &merge, py::arg("branch"), "Brings the changes of a branch in.")
        .def(
            "destroy",
            [](ModelView const& view) {
                view.hold->requireThread();
                view.hold->destroy();
            },
            "Ends the model now, with all branches.");
}

void addProperties(ModelClass& model) {
    model.def_property_readonly("uri", &uriOf, "The name of the model among all models.")
        .def_property_readonly(
            "exists",
            [](ModelView const& view) {
                view.hold->requireThread();
                return !view.hold->isDestroyed() && view.deviant.isValid();
            },
            "Whether the model, or the branch, is still there.")
        .def_property(
            "undo_enabled",
            [](ModelView const& view) { return switchesOf(view).isUndoEnabled; },
            &setUndoEnabled,
            "Whether each transaction is a step that can be undone; then every change needs one.")
        .def_property(
            "read_only",
            [](ModelView const& view) { return switchesOf(view).isReadOnly; },
            &setReadOnly,
            "Whether every change is refused.");
}

void addHabits(ModelClass& model) {
    model.def("__eq__", &isEqual)
        .def("__hash__", [](ModelView const& view) { return view.deviant.hash() >> 1; })
        .def("__repr__", [](ModelView const& view) { return represent(view, "Model"); })
        .def("__reduce_ex__", [](ModelView const&, int) {
            raise(PyExc_TypeError,
                  "A model can't be copied or pickled. velum.save() stores it in a file; branch() "
                  "gives a view to change by itself.");
        });
}

} // namespace

void addModels(py::module_& module) {
    addTransactions(module);
    ModelClass model(module,
                     "Model",
                     "A model: the owner of its objects. It ends with the last reference to it and "
                     "to its objects.");
    addObjectMethods(model);
    addStepMethods(model);
    addProperties(model);
    addHabits(model);
    py::class_<BranchView, ModelView>(
        module, "Branch", "A branch of a model: a view of the same objects, changed by itself.")
        .def_property_readonly(
            "model",
            [](BranchView const& view) { return wrapModel(view.hold, view.hold->root()); },
            "The model that the branch is one of.")
        .def("remove", &removeBranch, "Ends the branch; the model is as it was.")
        .def("__enter__", [](py::object self) { return self; })
        .def("__exit__",
             [](BranchView const& view, py::args const&) {
                 if (view.deviant.isValid()) {
                     removeBranch(view);
                 }
             })
        .def("__repr__", [](BranchView const& view) { return represent(view, "Branch"); });
}

py::object wrapModel(HoldRef hold, QOB::Deviant deviant) {
    ModelView view{std::move(hold), deviant};
    if (deviant == view.hold->root()) {
        return py::cast(std::move(view));
    }
    return py::cast(BranchView{std::move(view)});
}

ModelView const& viewOf(py::handle value, char const* purpose) {
    py::detail::make_caster<ModelView> caster;
    if (!caster.load(value, false)) {
        raise(PyExc_TypeError,
              std::string(purpose) + " takes a velum.Model or a velum.Branch, not " +
                  typeNameOf(value.ptr()) + ".");
    }
    return py::detail::cast_op<ModelView const&>(caster);
}

} // namespace velum::python
