#pragma once

#include <pybind11/pybind11.h>
#include <string>
#include <utility>

namespace velum::python {

namespace py = pybind11;

/// velum.Error, and what it becomes for an operation that the library declares and doesn't have.
/// Made once; never freed.
extern PyObject* errorType;
extern PyObject* unimplementedErrorType;

/// Makes the exception types and enters them in the module.
void addErrors(py::module_& module);

/// Raises a Python exception. Leave by it what returns to Python through `guarded`.
[[noreturn]] void raise(PyObject* type, std::string const& text);

/// Throws on the Python exception that a call of the interpreter left.
inline void require(bool isDone) {
    if (!isDone) {
        throw py::error_already_set();
    }
}
inline PyObject* required(PyObject* result) {
    require(result != nullptr);
    return result;
}

/// Makes a Python exception of the one in flight. To be called in a catch block.
void translateException() noexcept;

/// Runs what may throw and returns its result; `onFailure`, with a Python exception set, if it
/// threw. Nothing thrown ever reaches the interpreter.
template <class Result, class Action>
Result guarded(Result onFailure, Action const& action) noexcept {
    try {
        return action();
    } catch (...) {
        translateException();
        return onFailure;
    }
}

} // namespace velum::python
