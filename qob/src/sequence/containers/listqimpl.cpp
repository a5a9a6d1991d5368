#include "qob/kernel/containers/sequence/list/listqimpl.h"

#include "sequence/containers/indexiterator.h"

#include <algorithm>
#include <stdexcept>

namespace QOB::ListQImplInternal {

using Generic::IteratorPtr;
using Generic::Ref;
using Generic::toRef;
using Generic::valueOf;

namespace {

template <class T>
bool equalsItself(T const& value) {
    T const& other = value;
    return value == other;
}

template <class T>
bool isEqual(T const& a, T const& b) {
    if constexpr (std::is_same_v<T, Object>) {
        return Generic::equalObjects(a, b);
    } else {
        return a == b;
    }
}

/// Equal, or neither equal to anything.
template <class T>
bool sameValue(T const& a, T const& b) {
    return isEqual(a, b) || (!equalsItself(a) && !equalsItself(b));
}

} // namespace

/// What an iterator keeps of its list.
template <class T>
using Snapshot = typename Performance::COWWrapper<std::vector<T>>::Snapshot;

template <class T>
class ListQImplForPrimitives<T>::Iterator final
    : public internal::IndexIterator<Iterator, Snapshot<T>, std::ptrdiff_t> {
    using Base = internal::IndexIterator<Iterator, Snapshot<T>, std::ptrdiff_t>;

public:
    using Base::Base;
    using Base::index;
    using Base::seen;

    bool atEnd() const noexcept {
        return seen().isNull() || static_cast<std::size_t>(index()) == seen().container().size();
    }
    T const& value() const noexcept {
        return seen().container()[static_cast<std::size_t>(index())];
    }
    bool standsWhere(Iterator const& there) const { return isAt(there.index(), there.value()); }
    /// True if it stands at this index of a list that has this value there.
    bool isAt(std::ptrdiff_t place, T const& there) const {
        return place == index() && sameValue(value(), there);
    }
};

template <class T>
ListQImplForPrimitives<T>::ListQImplForPrimitives(ListQImplForPrimitives const& other)
    : SequenceIntf(other) {
    if (!other.values_.empty()) {
        values_.writable() = other.values_.read();
    }
}

template <class T>
ListQImplForPrimitives<T>&
ListQImplForPrimitives<T>::operator=(ListQImplForPrimitives const& other) {
    if (this != &other && values_.read() != other.values_.read()) {
        values_.writable() = other.values_.read();
    }
    return *this;
}

template <class T>
ListQImplForPrimitives<T>::~ListQImplForPrimitives() = default;

template <class T>
std::ptrdiff_t ListQImplForPrimitives<T>::offsetOf(IteratorIntf const* position) const {
    Iterator const& own = Iterator::own(position);
    if (own.seen().isOf(values_)) {
        return own.index();
    }
    auto const size = static_cast<std::ptrdiff_t>(values_.size());
    if (own.atEnd()) {
        return size;
    }
    internal::checkPlace(own.index() < size &&
                         own.isAt(own.index(), values_[static_cast<std::size_t>(own.index())]));
    return own.index();
}

template <class T>
IteratorPtr ListQImplForPrimitives<T>::iteratorAt(std::ptrdiff_t offset) const {
    typename Performance::COWWrapper<std::vector<T>>::Lock const lock(values_);
    values_.ensureUnique();
    return std::make_unique<Iterator>(Snapshot<T>(values_), offset);
}

template <class T>
void ListQImplForPrimitives<T>::insertAt(std::ptrdiff_t offset, T const& value) {
    if (values_.size() == values_.read().max_size()) {
        throw std::length_error("vector<T> too long");
    }
    std::vector<T>& values = values_.writable();
    values.insert(values.begin() + offset, value);
}

template <class T>
IteratorPtr ListQImplForPrimitives<T>::eraseRange(std::ptrdiff_t first, std::ptrdiff_t last) {
    std::vector<T>& values = values_.writable();
    values.erase(values.begin() + first, values.begin() + last);
    return iteratorAt(first);
}

template <class T>
Ref ListQImplForPrimitives<T>::generic_at(Deviant const& deviant, int index) const {
    internal::checkElementIndex(index, generic_size(deviant));
    return toRef(values_[static_cast<std::size_t>(index)]);
}

template <class T>
Ref ListQImplForPrimitives<T>::generic_front(Deviant const&) const {
    internal::checkNotEmpty(values_.empty());
    return toRef(values_.read().front());
}

template <class T>
Ref ListQImplForPrimitives<T>::generic_back(Deviant const&) const {
    internal::checkNotEmpty(values_.empty());
    return toRef(values_.read().back());
}

template <class T>
IteratorPtr ListQImplForPrimitives<T>::generic_begin(Deviant const&) const {
    return iteratorAt(0);
}

template <class T>
IteratorPtr ListQImplForPrimitives<T>::generic_end(Deviant const& deviant) const {
    return iteratorAt(generic_size(deviant));
}

template <class T>
void ListQImplForPrimitives<T>::generic_clear(Deviant const&) {
    values_.writable().clear();
}

template <class T>
int ListQImplForPrimitives<T>::generic_size(Deviant const&) const {
    return static_cast<int>(values_.size());
}

template <class T>
bool ListQImplForPrimitives<T>::generic_empty(Deviant const&) const {
    return values_.empty();
}

template <class T>
IteratorPtr ListQImplForPrimitives<T>::generic_insert(Deviant const&,
                                                      IteratorIntf const* position,
                                                      Ref element) {
    std::ptrdiff_t const offset = offsetOf(position);
    Iterator::useUp(position);
    insertAt(offset, valueOf<T>(element));
    return iteratorAt(offset);
}

template <class T>
void ListQImplForPrimitives<T>::generic_insert(Deviant const& deviant, int index, Ref element) {
    internal::checkInsertIndex(index, generic_size(deviant));
    insertAt(index, valueOf<T>(element));
}

template <class T>
void ListQImplForPrimitives<T>::generic_erase(Deviant const& deviant, int index) {
    internal::checkElementIndex(index, generic_size(deviant));
    std::vector<T>& values = values_.writable();
    values.erase(values.begin() + index);
}

template <class T>
IteratorPtr ListQImplForPrimitives<T>::generic_erase(Deviant const&,
                                                     IteratorIntf const* first,
                                                     IteratorIntf const* last) {
    std::ptrdiff_t const begin = offsetOf(first);
    std::ptrdiff_t const end = offsetOf(last);
    internal::checkRange(begin <= end);
    if (begin == end) {
        return iteratorAt(begin);
    }
    Iterator::useUp(first);
    Iterator::useUp(last);
    return eraseRange(begin, end);
}

template <class T>
IteratorPtr ListQImplForPrimitives<T>::generic_erase(Deviant const&, IteratorIntf const* position) {
    std::ptrdiff_t const offset = offsetOf(position);
    internal::checkNotAtEnd(offset == static_cast<std::ptrdiff_t>(values_.size()));
    Iterator::useUp(position);
    return eraseRange(offset, offset + 1);
}

template <class T>
void ListQImplForPrimitives<T>::generic_pop_back(Deviant const&) {
    internal::checkNotEmpty(values_.empty());
    values_.writable().pop_back();
}

template <class T>
void ListQImplForPrimitives<T>::generic_pop_front(Deviant const&) {
    internal::checkNotEmpty(values_.empty());
    std::vector<T>& values = values_.writable();
    values.erase(values.begin());
}

template <class T>
void ListQImplForPrimitives<T>::generic_push_back(Deviant const& deviant, Ref element) {
    insertAt(generic_size(deviant), valueOf<T>(element));
}

template <class T>
void ListQImplForPrimitives<T>::generic_push_front(Deviant const&, Ref element) {
    insertAt(0, valueOf<T>(element));
}

template <class T>
void ListQImplForPrimitives<T>::generic_replace(Deviant const& deviant, int index, Ref element) {
    internal::checkElementIndex(index, generic_size(deviant));
    values_.writable()[static_cast<std::size_t>(index)] = valueOf<T>(element);
}

template <class T>
bool ListQImplForPrimitives<T>::generic_contains(Deviant const&, Ref element) const {
    std::vector<T> const& values = values_.read();
    return std::find(values.begin(), values.end(), valueOf<T>(element)) != values.end();
}

template <class T>
char const*
ListQImplForPrimitives<T>::generic_getLumvoName(bool, bool, char const* fallback) const {
    return fallback;
}

template <class T>
bool ListQImplForPrimitives<T>::specialized_equal(Deviant const&,
                                                  SequenceIntf const* other,
                                                  Deviant const&,
                                                  bool& handled) const {
    auto const* const same = dynamic_cast<ListQImplForPrimitives const*>(other);
    if (same == nullptr) {
        return false;
    }
    handled = true;
    return std::equal(
        values().begin(), values().end(), same->values().begin(), same->values().end(), isEqual<T>);
}

template <class T>
int ListQImplForPrimitives<T>::generic_removeAll(Deviant const& deviant, Ref element) {
    T const& value = valueOf<T>(element);
    int removed = 0;
    for (std::size_t i = 0; i < values_.size();) {
        if (values_[i] == value) {
            IteratorPtr const position = iteratorAt(static_cast<std::ptrdiff_t>(i));
            IteratorPtr const behind = generic_erase(deviant, position.get());
            i = static_cast<std::size_t>(offsetOf(behind.get()));
            ++removed;
        } else {
            ++i;
        }
    }
    return removed;
}

template class ListQImplForPrimitives<Integer>;
template class ListQImplForPrimitives<Real>;
template class ListQImplForPrimitives<String>;
template class ListQImplForPrimitives<ExternalToolInfo>;
template class ListQImplForPrimitives<Object>;

} // namespace QOB::ListQImplInternal
