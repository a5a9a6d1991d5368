#include "tool.h"

#include "arguments.h"
#include "check/rules.h"
#include "converter.h"
#include "diff/comparison.h"
#include "handle.h"
#include "model/addresses.h"
#include "model/metaclasses.h"
#include "model/values.h"
#include "reports.h"
#include "text.h"

#include <set>
#include <velum_arxml/read.h>
#include <velum_arxml/write.h>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfactory.h>

namespace velum::python {

namespace {

namespace types = Zorvane::metamodel::types;

ModelView newView() {
    HoldRef hold(ModelHold::adopt(types::NSInterface::FactoryIntf::createNewModel()));
    return {hold, hold->root()};
}

arxml::Report readInto(ModelView const& view,
                       py::handle paths,
                       char const* function,
                       bool keepsSources,
                       py::object onProgress) {
    QOB::Model const model = view.handle();
    arxml::Options options;
    arxml::Sources sources;
    options.onProgress = progressTo(std::move(onProgress));
    options.sources = keepsSources ? &sources : nullptr;
    arxml::Report report = arxml::read(filesFrom(paths, function), model, options);
    if (keepsSources) {
        view.hold->sources = std::move(sources);
    }
    return report;
}

py::tuple
read(py::object const& paths, py::object const& into, bool keepsSources, py::object onProgress) {
    ModelView const view = into.is_none() ? newView() : viewOf(into, "read(into=)");
    arxml::Report const report =
        readInto(view, paths, "read()", keepsSources, std::move(onProgress));
    return py::make_tuple(into.is_none() ? wrapModel(view.hold, view.deviant) : into,
                          python::toPython(report));
}

arxml::Layout layoutFrom(std::string const& name) {
    if (name == "one-file") {
        return arxml::Layout::oneFile;
    }
    if (name == "file-per-package") {
        return arxml::Layout::filePerPackage;
    }
    raise(PyExc_ValueError,
          "layout is \"one-file\" or \"file-per-package\", not \"" + name + "\".");
}

std::vector<QOB::ClassObject> objectsFrom(py::handle values) {
    if (!py::isinstance<py::iterable>(values)) {
        raise(PyExc_TypeError,
              "write() takes a model, a branch or an iterable of objects, not " +
                  typeNameOf(values.ptr()) + ".");
    }
    std::vector<QOB::ClassObject> objects;
    for (py::handle const value : py::reinterpret_borrow<py::iterable>(values)) {
        if (!isHandle(value.ptr())) {
            raise(PyExc_TypeError,
                  "write() takes objects of a model, not " + typeNameOf(value.ptr()) + ".");
        }
        HandleObject const& handle = handleOf(value.ptr());
        handle.hold->requireThread();
        objects.push_back(handle.object);
    }
    return objects;
}

py::object write(py::object const& source,
                 py::object const& target,
                 std::string const& schema,
                 std::string const& layout,
                 std::string const& package,
                 bool isReadBack,
                 py::object onProgress) {
    arxml::WriteOptions options;
    options.schema = schema;
    options.layout = layoutFrom(layout);
    options.package = package;
    options.isReadBack = isReadBack;
    options.onProgress = progressTo(std::move(onProgress));
    std::string const path = pathFrom(target);
    if (py::isinstance<ModelView>(source)) {
        return python::toPython(arxml::write(viewOf(source, "write()").handle(), path, options));
    }
    return python::toPython(arxml::write(objectsFrom(source), path, options));
}

void save(py::object const& source, py::object const& path) {
    QOB::Store::save(viewOf(source, "save()").handle(), pathFrom(path));
}

py::tuple load(py::object const& path, bool skipsUnknown) {
    QOB::LoadReport report;
    HoldRef hold(
        ModelHold::adopt(QOB::Store::load(pathFrom(path), {.skipUnknown = skipsUnknown}, &report)));
    return py::make_tuple(wrapModel(hold, hold->root()), toPython(report, hold));
}

/// A model that is given, or a new one with the files that are.
ModelView modelFrom(py::handle value, char const* function, bool keepsSources) {
    if (py::isinstance<ModelView>(value)) {
        return viewOf(value, function);
    }
    ModelView view = newView();
    readInto(view, value, function, keepsSources, py::none());
    return view;
}

// Differences -----------------------------------------------------------------------------------

char const* wordFor(diff::ChangeKind kind) {
    switch (kind) {
    case diff::ChangeKind::value:
        return "value";
    case diff::ChangeKind::order:
        return "order";
    case diff::ChangeKind::metaclass:
        return "class";
    case diff::ChangeKind::added:
        return "added";
    case diff::ChangeKind::removed:
        return "removed";
    case diff::ChangeKind::renamed:
        break;
    }
    return "renamed";
}

py::tuple
valuesOf(std::vector<QOB::Object> const& values, HoldRef const& near, model::Addresses& addresses) {
    return tupleOf(values, [&](QOB::Object const& value) {
        return newReport(
            "Value", anyToPython(value, near), textToPython(model::textOf(value, addresses)));
    });
}

py::object toPython(diff::Single const& each) {
    return newReport("Single", textToPython(each.path), textToPython(each.metaclass));
}

py::object toPython(diff::Renaming const& each) {
    return newReport(
        "Renaming", textToPython(each.from), textToPython(each.to), textToPython(each.metaclass));
}

diff::Options optionsFrom(py::iterable const& ignored, py::object const& only) {
    diff::Options options;
    for (py::handle const name : ignored) {
        options.ignored.insert(stringFromPython(py::str(name).ptr()));
    }
    if (!only.is_none()) {
        bool const isClass =
            PyType_Check(only.ptr()) != 0 &&
            PyType_IsSubtype(reinterpret_cast<PyTypeObject*>(only.ptr()), &objectType) != 0;
        std::string const name = isClass ? stringFromPython(only.attr("__name__").ptr()) : "";
        options.onlyClass = isClass ? model::findMetaclass(name) : nullptr;
        if (options.onlyClass == nullptr) {
            raise(PyExc_TypeError,
                  "diff(only=) takes a class of velum, not " + typeNameOf(only.ptr()) + ".");
        }
    }
    return options;
}

py::object compare(py::object const& older,
                   py::object const& newer,
                   py::iterable const& ignored,
                   py::object const& only) {
    diff::Options const options = optionsFrom(ignored, only);
    ModelView const left = modelFrom(older, "diff()", false);
    ModelView const right = modelFrom(newer, "diff()", false);
    model::Addresses leftAddresses;
    model::Addresses rightAddresses;
    diff::Comparison const found = diff::compareModels(
        left.handle(), right.handle(), {leftAddresses, rightAddresses}, options);
    auto const convert = [](auto const& each) { return toPython(each); };
    return newReport("DiffReport",
                     tupleOf(found.added, convert),
                     tupleOf(found.removed, convert),
                     tupleOf(found.renamed, convert),
                     tupleOf(found.changed,
                             [&](diff::Change const& each) {
                                 return newReport(
                                     "Change",
                                     textToPython(each.path),
                                     textToPython(each.part),
                                     textToPython(each.property),
                                     wordFor(each.kind),
                                     each.isMany,
                                     valuesOf(each.oldValues, left.hold, leftAddresses),
                                     valuesOf(each.newValues, right.hold, rightAddresses));
                             }),
                     found.sameCount);
}

// Findings --------------------------------------------------------------------------------------

py::object toPython(check::Issue const& issue) {
    bool const hasPlace = issue.place.has_value();
    py::object const file = hasPlace ? textToPython(issue.place->file) : py::none();
    return newReport("Issue",
                     textToPython(issue.path),
                     issue.rule->id,
                     check::word(issue.rule->severity),
                     textToPython(issue.text),
                     file,
                     hasPlace ? issue.place->position.line : 0,
                     hasPlace ? issue.place->position.column : 0);
}

py::object checkModel(py::object const& target) {
    ModelView const view = modelFrom(target, "check()", true);
    return newReport("CheckReport",
                     tupleOf(check::checkModel(view.handle(), view.hold->sources),
                             [](check::Issue const& each) { return toPython(each); }));
}

} // namespace

void addTool(py::module_& module) {
    module.def("read",
               &read,
               py::arg("paths"),
               py::kw_only(),
               py::arg("into") = py::none(),
               py::arg("keep_sources") = false,
               py::arg("on_progress") = py::none(),
               "Reads AUTOSAR files; returns the model and a ReadReport.");
    module.def("write",
               &write,
               py::arg("source"),
               py::arg("target"),
               py::kw_only(),
               py::arg("schema") = arxml::WriteOptions().schema,
               py::arg("layout") = "one-file",
               py::arg("package") = arxml::WriteOptions().package,
               py::arg("read_back") = true,
               py::arg("on_progress") = py::none(),
               "Writes a model, a branch or some objects as AUTOSAR files; returns a WriteReport.");
    module.def("save", &save, py::arg("source"), py::arg("path"), "Saves a model in a file.");
    module.def("load",
               &load,
               py::arg("path"),
               py::kw_only(),
               py::arg("skip_unknown") = false,
               "Loads a file that save() made; returns the model and a LoadReport.");
    module.def("diff",
               &compare,
               py::arg("old"),
               py::arg("new"),
               py::kw_only(),
               py::arg("ignore") = py::tuple(),
               py::arg("only") = py::none(),
               "Compares two models, branches or releases of files; returns a DiffReport.");
    module.def("check",
               &checkModel,
               py::arg("target"),
               "Finds what is legal but doubtful in a model, a branch or files; returns a "
               "CheckReport.");
}

} // namespace velum::python
