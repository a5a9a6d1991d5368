#include "listview.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace velum::python {

using QOB::Generic::Ref;

ListView::ListView(QOB::ClassObject object, HoldRef hold, Property const& property)
    : object_(std::move(object)),
      hold_(std::move(hold)),
      property_(&property),
      elements_(
          property.record->getMultiValued(object_.get(), object_.getDeviant(), property.id, true)) {
}

bool ListView::isOfSameValues(ListView const& other) const noexcept {
    return object_ == other.object_ && property_ == other.property_ &&
           object_.getDeviant() == other.object_.getDeviant();
}

PyObject* ListView::at(Py_ssize_t index) const {
    Ref const element = elements_.generic_at(static_cast<int>(index));
    if (property_->converter->isForObjects()) {
        return wrapNear(QOB::ClassObject(QOB::Generic::objectOf(element), element.deviant), hold_);
    }
    return property_->converter->toPython(QOB::Generic::valueOf<QOB::Object>(element), hold_);
}

Ref ListView::valueOf(PyObject* value) const {
    QOB::Object const converted = property_->converter->fromPython(value, property_->qualifiedName);
    return property_->converter->isForObjects() ? QOB::Generic::toRef(QOB::ClassObject(converted))
                                                : QOB::Generic::toRef(converted);
}

ListView::Values ListView::valuesOf(PyObject* iterable) const {
    // Of a text, the letters are hardly meant.
    if (PyUnicode_Check(iterable) != 0 || PyBytes_Check(iterable) != 0 ||
        !py::isinstance<py::iterable>(iterable)) {
        raise(PyExc_TypeError,
              property_->qualifiedName + " takes an iterable of " +
                  property_->converter->typeName() + ", not " + typeNameOf(iterable) + ".");
    }
    // A copy first: the iterable may be this list, or run code that changes it.
    auto const items = py::reinterpret_steal<py::object>(required(PySequence_List(iterable)));
    Values values;
    values.reserve(static_cast<std::size_t>(PyList_GET_SIZE(items.ptr())));
    for (Py_ssize_t i = 0; i < PyList_GET_SIZE(items.ptr()); ++i) {
        values.push_back(valueOf(PyList_GET_ITEM(items.ptr(), i)));
    }
    return values;
}

ListView::Values ListView::all() const {
    Values values;
    int const count = elements_.generic_size();
    values.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        values.push_back(elements_.generic_at(i));
    }
    return values;
}

bool ListView::contains(Ref const& value) const {
    return elements_.generic_contains(value);
}

Py_ssize_t ListView::find(Ref const& value, Py_ssize_t first) const {
    int const count = elements_.generic_size();
    for (int i = static_cast<int>(first); i < count; ++i) {
        if (sameElement(elements_.generic_at(i), value)) {
            return i;
        }
    }
    return -1;
}

void ListView::insert(Py_ssize_t index, Values const& values) const {
    requireWritable();
    if (property_->isUnique) {
        requireDistinct(values);
        for (Ref const& value : values) {
            if (contains(value)) {
                failRepeated();
            }
        }
    }
    for (int at = static_cast<int>(index); Ref const& value : values) {
        elements_.generic_insert(at++, value);
    }
}

void ListView::replace(Py_ssize_t index, Ref const& value) const {
    requireWritable();
    int const at = static_cast<int>(index);
    if (sameElement(elements_.generic_at(at), value)) {
        return;
    }
    if (property_->isUnique && contains(value)) {
        failRepeated();
    }
    elements_.generic_replace(at, value);
}

void ListView::erase(Py_ssize_t first, Py_ssize_t last) const {
    requireWritable();
    while (last > first) {
        elements_.generic_erase(static_cast<int>(--last));
    }
}

void ListView::assign(Values const& values) const {
    requireWritable();
    if (property_->isUnique) {
        requireDistinct(values);
    }
    Values const old = all();
    auto const isSame = [](Ref const& a, Ref const& b) { return sameElement(a, b); };
    auto const [from, to] =
        std::mismatch(old.begin(), old.end(), values.begin(), values.end(), isSame);
    auto const [behind, end] = std::mismatch(old.rbegin(),
                                             std::make_reverse_iterator(from),
                                             values.rbegin(),
                                             std::make_reverse_iterator(to),
                                             isSame);
    Py_ssize_t const first = from - old.begin();
    erase(first, behind.base() - old.begin());
    insert(first, Values(to, end.base()));
}

void ListView::requireWritable() const {
    if (property_->isReadOnly) {
        raise(PyExc_TypeError, property_->qualifiedName + " is derived and can't be changed.");
    }
}

void ListView::requireDistinct(Values const& values) const {
    if (property_->converter->isForObjects()) {
        std::unordered_set<void const*> known;
        for (Ref const& value : values) {
            if (!known.insert(value.data).second) {
                failRepeated();
            }
        }
        return;
    }
    for (std::size_t i = 0; i != values.size(); ++i) {
        for (std::size_t j = 0; j != i; ++j) {
            if (sameElement(values[i], values[j])) {
                failRepeated();
            }
        }
    }
}

void ListView::failRepeated() const {
    raise(PyExc_ValueError, property_->qualifiedName + " holds no value twice.");
}

} // namespace velum::python
