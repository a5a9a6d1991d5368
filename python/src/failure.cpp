#include "failure.h"

#include <exception>
#include <new>
#include <qob/qob/exception.h>

namespace velum::python {

PyObject* errorType = nullptr;
PyObject* unimplementedErrorType = nullptr;

void addErrors(py::module_& module) {
    errorType = required(PyErr_NewExceptionWithDoc("velum.Error",
                                                   "The library refuses an operation. The text is "
                                                   "the library's own.",
                                                   nullptr,
                                                   nullptr));
    py::tuple const bases = py::make_tuple(py::handle(errorType), py::handle(PyExc_AttributeError));
    unimplementedErrorType =
        required(PyErr_NewExceptionWithDoc("velum.UnimplementedError",
                                           "A derived property that the library declares and "
                                           "can't compute. hasattr() is false for it.",
                                           bases.ptr(),
                                           nullptr));
    module.attr("Error") = py::handle(errorType);
    module.attr("UnimplementedError") = py::handle(unimplementedErrorType);
    // What pybind11 calls is translated in the same way.
    py::register_exception_translator([](std::exception_ptr failure) {
        try {
            std::rethrow_exception(std::move(failure));
        } catch (py::error_already_set const&) {
            throw;
        } catch (py::builtin_exception const&) {
            throw;
        } catch (...) {
            translateException();
        }
    });
}

void raise(PyObject* type, std::string const& text) {
    PyObject* const message =
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace");
    if (message != nullptr) {
        PyErr_SetObject(type, message);
        Py_DECREF(message);
    }
    throw py::error_already_set();
}

namespace {

void setError(PyObject* type, char const* text) noexcept {
    PyObject* const message = PyUnicode_DecodeUTF8(
        text, static_cast<Py_ssize_t>(std::char_traits<char>::length(text)), "replace");
    if (message != nullptr) {
        PyErr_SetObject(type, message);
        Py_DECREF(message);
    }
}

} // namespace

void translateException() noexcept {
    try {
        throw;
    } catch (py::error_already_set& raised) {
        raised.restore();
    } catch (py::builtin_exception const& raised) {
        raised.set_error();
    } catch (QOB::UnImplementedException const& failure) {
        setError(unimplementedErrorType, failure.what());
    } catch (std::bad_alloc const&) {
        PyErr_NoMemory();
    } catch (std::exception const& failure) {
        setError(errorType, failure.what());
    } catch (...) {
        setError(errorType, "The library failed without a text.");
    }
}

} // namespace velum::python
