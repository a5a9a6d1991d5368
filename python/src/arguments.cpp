#include "arguments.h"

#include "handle.h"
#include "model/input_files.h"
#include "text.h"

#include <utility>
#include <velum_arxml/source/input_error.h>

namespace velum::python {

namespace {

std::vector<std::string> documentsOf(std::vector<std::string> const& names) {
    model::InputFiles files = model::inputFiles(names);
    if (!files.stores.empty()) {
        throw arxml::InputError(files.stores.front(), "This is a store; velum.load reads it.");
    }
    return std::move(files.documents);
}

} // namespace

bool isPath(py::handle value) {
    return py::isinstance<py::str>(value) || py::hasattr(value, "__fspath__");
}

std::string pathFrom(py::handle path) {
    auto const text = py::reinterpret_steal<py::object>(required(PyOS_FSPath(path.ptr())));
    if (!py::isinstance<py::str>(text)) {
        raise(PyExc_TypeError,
              "A path is a str or a path object, not " + typeNameOf(path.ptr()) + ".");
    }
    return stringFromPython(text.ptr());
}

std::vector<std::string> filesFrom(py::handle paths, char const* function) {
    if (isPath(paths)) {
        return documentsOf({pathFrom(paths)});
    }
    if (py::isinstance<py::bytes>(paths) || !py::isinstance<py::iterable>(paths)) {
        raise(PyExc_TypeError,
              std::string(function) + " takes a path or an iterable of paths, not " +
                  typeNameOf(paths.ptr()) + ".");
    }
    std::vector<std::string> names;
    for (py::handle const path : py::reinterpret_borrow<py::iterable>(paths)) {
        names.push_back(pathFrom(path));
    }
    if (names.empty()) {
        raise(PyExc_ValueError, std::string(function) + " takes at least one path.");
    }
    return documentsOf(names);
}

std::function<void(std::uint64_t)> progressTo(py::object callback) {
    if (!callback.is_none() && PyCallable_Check(callback.ptr()) == 0) {
        raise(PyExc_TypeError,
              "on_progress takes a function, not " + typeNameOf(callback.ptr()) + ".");
    }
    return [callback = std::move(callback)](std::uint64_t count) {
        require(PyErr_CheckSignals() == 0);
        if (!callback.is_none()) {
            callback(count);
        }
    };
}

} // namespace velum::python
