#pragma once

#include "failure.h"

#include <cstring>
#include <qob/qob/string.h>
#include <string>
#include <string_view>

namespace velum::python {

/// A new str. Bytes that are no UTF-8 become lone surrogates, and those become the bytes again.
inline PyObject* newText(std::string_view text) {
    return PyUnicode_DecodeUTF8(
        text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
}
inline py::object textToPython(std::string_view text) {
    return py::reinterpret_steal<py::object>(required(newText(text)));
}

/// The bytes of a str. Raises UnicodeEncodeError for a surrogate that stands for no byte.
inline QOB::String textFromPython(PyObject* text) {
    Py_ssize_t size = 0;
    if (char const* const bytes = PyUnicode_AsUTF8AndSize(text, &size)) {
        // Without a copy in between, unless there is a zero byte in it.
        auto const length = static_cast<std::size_t>(size);
        return std::strlen(bytes) == length ? QOB::String(bytes)
                                            : QOB::String(std::string(bytes, length));
    }
    PyErr_Clear();
    auto const encoded = py::reinterpret_steal<py::bytes>(
        required(PyUnicode_AsEncodedString(text, "utf-8", "surrogateescape")));
    return static_cast<std::string>(encoded);
}

inline std::string stringFromPython(PyObject* text) {
    return textFromPython(text);
}

} // namespace velum::python
