#pragma once

#include "property.h"

#include <qob/qob.h>
#include <vector>

namespace velum::python {

/// The values of an object's property with many, and what Python's lists do with theirs. Whatever
/// is refused is refused before anything changes.
class ListView {
public:
    using Values = std::vector<QOB::Generic::Ref>;

    /// In the model's thread.
    ListView(QOB::ClassObject object, HoldRef hold, Property const& property);

    Property const& property() const noexcept { return *property_; }
    HoldRef const& hold() const noexcept { return hold_; }
    bool isOfSameValues(ListView const& other) const noexcept;

    Py_ssize_t size() const { return elements_.generic_size(); }
    /// A new reference; the index is within the list.
    PyObject* at(Py_ssize_t index) const;

    /// Of a Python value. Raises TypeError for one of another type.
    QOB::Generic::Ref valueOf(PyObject* value) const;
    Values valuesOf(PyObject* iterable) const;
    Values all() const;

    bool contains(QOB::Generic::Ref const& value) const;
    /// The first place from `first` on; -1 if there is none.
    Py_ssize_t find(QOB::Generic::Ref const& value, Py_ssize_t first = 0) const;

    void insert(Py_ssize_t index, Values const& values) const;
    void replace(Py_ssize_t index, QOB::Generic::Ref const& value) const;
    void erase(Py_ssize_t first, Py_ssize_t last) const;
    /// Makes these the values. What is at both ends already stays untouched.
    void assign(Values const& values) const;

private:
    void requireWritable() const;
    /// Raises ValueError if a list without repetitions would have one.
    void requireDistinct(Values const& values) const;
    [[noreturn]] void failRepeated() const;

    QOB::ClassObject object_;
    HoldRef hold_;
    Property const* property_;
    QOB::Generic::SequenceRef elements_;
};

} // namespace velum::python
