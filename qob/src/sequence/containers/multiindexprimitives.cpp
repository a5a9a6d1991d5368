#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "sequence/containers/indexiterator.h"

#include <boost/multi_index/identity.hpp>
#include <boost/multi_index/ordered_index.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>

#include <cmath>
#include <utility>

namespace QOB::MultiIndexImplInternal {

using Generic::IteratorPtr;
using Generic::Ref;
using Generic::toRef;
using Generic::valueOf;

/// The value's own order. A NaN, which has no place in it, stands behind all numbers and equals
/// every other NaN.
template <class T>
struct ElementLess {
    bool operator()(T const& a, T const& b) const noexcept {
        if constexpr (std::is_same_v<T, Real>) {
            bool const aIsNan = a.isValid() && std::isnan(static_cast<double const&>(a));
            bool const bIsNan = b.isValid() && std::isnan(static_cast<double const&>(b));
            if (aIsNan || bIsNan) {
                return !aIsNan;
            }
        }
        return a < b;
    }
};

namespace bmi = boost::multi_index;

template <class T>
using Values = bmi::multi_index_container<
    T,
    bmi::indexed_by<bmi::random_access<>, bmi::ordered_unique<identity<T>, ElementLess<T>>>>;

template <class T, bool Unique, class Key>
struct MultiIndexImplForPrimitives<T, Unique, Key>::Container {
    Values<T> values;
};

/// There is no container in a sequence that never held anything.
template <class T, bool Unique, class Key>
class MultiIndexImplForPrimitives<T, Unique, Key>::Iterator final
    : public internal::IndexIterator<Iterator, std::shared_ptr<Container>, int> {
    using Base = internal::IndexIterator<Iterator, std::shared_ptr<Container>, int>;

public:
    using Base::Base;
    using Base::index;
    using Base::seen;

    bool atEnd() const noexcept {
        return seen() == nullptr || static_cast<std::size_t>(index()) == seen()->values.size();
    }
    T const& value() const { return seen()->values[static_cast<std::size_t>(index())]; }
    bool standsWhere(Iterator const& there) const noexcept {
        ElementLess<T> const less;
        return !less(value(), there.value()) && !less(there.value(), value());
    }
};

// A copy shares the container until one of the two is written.

template <class T, bool Unique, class Key>
MultiIndexImplForPrimitives<T, Unique, Key>::MultiIndexImplForPrimitives() noexcept = default;

template <class T, bool Unique, class Key>
MultiIndexImplForPrimitives<T, Unique, Key>::MultiIndexImplForPrimitives(
    MultiIndexImplForPrimitives const& other) = default;

template <class T, bool Unique, class Key>
MultiIndexImplForPrimitives<T, Unique, Key>& MultiIndexImplForPrimitives<T, Unique, Key>::operator=(
    MultiIndexImplForPrimitives const& other) = default;

template <class T, bool Unique, class Key>
MultiIndexImplForPrimitives<T, Unique, Key>::~MultiIndexImplForPrimitives() = default;

template <class T, bool Unique, class Key>
auto MultiIndexImplForPrimitives<T, Unique, Key>::container() -> Container& {
    if (container_ == nullptr) {
        container_ = std::make_shared<Container>();
    } else if (container_.use_count() != 1) {
        container_ = std::make_shared<Container>(*container_);
    }
    return *container_;
}

template <class T, bool Unique, class Key>
int MultiIndexImplForPrimitives<T, Unique, Key>::size() const noexcept {
    return container_ == nullptr ? 0 : static_cast<int>(container_->values.size());
}

template <class T, bool Unique, class Key>
int MultiIndexImplForPrimitives<T, Unique, Key>::indexOf(T const& value) const {
    if (container_ == nullptr) {
        return 0;
    }
    auto const& values = container_->values;
    return static_cast<int>(values.template project<0>(values.template get<1>().find(value)) -
                            values.begin());
}

template <class T, bool Unique, class Key>
int MultiIndexImplForPrimitives<T, Unique, Key>::indexOf(IteratorIntf const* position) const {
    Iterator const& own = Iterator::own(position);
    if (own.seen() == container_) {
        return own.index();
    }
    int const index = own.atEnd() ? size() : indexOf(own.value());
    internal::checkPlace(own.atEnd() || index != size());
    return index;
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::insertAt(int index, T const& value) {
    if (indexOf(value) == size()) {
        Values<T>& values = container().values;
        values.insert(values.begin() + index, value);
    }
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::eraseRange(int first, int last) {
    Values<T>& values = container().values;
    values.erase(values.begin() + first, values.begin() + last);
}

template <class T, bool Unique, class Key>
Ref MultiIndexImplForPrimitives<T, Unique, Key>::generic_at(Deviant const&, int index) const {
    internal::checkElementIndex(index, size());
    return toRef(container_->values[static_cast<std::size_t>(index)]);
}

template <class T, bool Unique, class Key>
Ref MultiIndexImplForPrimitives<T, Unique, Key>::generic_front(Deviant const&) const {
    internal::checkNotEmpty(size() == 0);
    return toRef(container_->values.front());
}

template <class T, bool Unique, class Key>
Ref MultiIndexImplForPrimitives<T, Unique, Key>::generic_back(Deviant const&) const {
    internal::checkNotEmpty(size() == 0);
    return toRef(container_->values.back());
}

template <class T, bool Unique, class Key>
IteratorPtr MultiIndexImplForPrimitives<T, Unique, Key>::generic_begin(Deviant const&) const {
    return std::make_unique<Iterator>(container_, 0);
}

template <class T, bool Unique, class Key>
IteratorPtr MultiIndexImplForPrimitives<T, Unique, Key>::generic_end(Deviant const&) const {
    return std::make_unique<Iterator>(container_, size());
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_clear(Deviant const&) {
    container_ = nullptr;
}

template <class T, bool Unique, class Key>
int MultiIndexImplForPrimitives<T, Unique, Key>::generic_size(Deviant const&) const {
    return size();
}

template <class T, bool Unique, class Key>
bool MultiIndexImplForPrimitives<T, Unique, Key>::generic_empty(Deviant const&) const {
    return size() == 0;
}

template <class T, bool Unique, class Key>
IteratorPtr
MultiIndexImplForPrimitives<T, Unique, Key>::generic_insert(Deviant const&,
                                                            IteratorIntf const* position,
                                                            Ref element) {
    T const& value = valueOf<T>(element);
    int index = indexOf(position);
    if (int const present = indexOf(value); present != size()) {
        index = present;
    } else {
        Iterator::useUp(position);
        insertAt(index, value);
    }
    return std::make_unique<Iterator>(container_, index);
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_insert(Deviant const&,
                                                                 int index,
                                                                 Ref element) {
    internal::checkInsertIndex(index, size());
    insertAt(index, valueOf<T>(element));
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_erase(Deviant const&, int index) {
    internal::checkElementIndex(index, size());
    eraseRange(index, index + 1);
}

template <class T, bool Unique, class Key>
IteratorPtr MultiIndexImplForPrimitives<T, Unique, Key>::generic_erase(Deviant const&,
                                                                       IteratorIntf const* first,
                                                                       IteratorIntf const* last) {
    int const begin = indexOf(first);
    int const end = indexOf(last);
    internal::checkRange(begin <= end);
    if (begin != end) {
        Iterator::useUp(first);
        Iterator::useUp(last);
        eraseRange(begin, end);
    }
    return std::make_unique<Iterator>(container_, begin);
}

template <class T, bool Unique, class Key>
IteratorPtr
MultiIndexImplForPrimitives<T, Unique, Key>::generic_erase(Deviant const&,
                                                           IteratorIntf const* position) {
    int const index = indexOf(position);
    internal::checkNotAtEnd(index == size());
    Iterator::useUp(position);
    eraseRange(index, index + 1);
    return std::make_unique<Iterator>(container_, index);
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_pop_back(Deviant const&) {
    internal::checkNotEmpty(size() == 0);
    eraseRange(size() - 1, size());
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_pop_front(Deviant const&) {
    internal::checkNotEmpty(size() == 0);
    eraseRange(0, 1);
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_push_back(Deviant const&, Ref element) {
    insertAt(size(), valueOf<T>(element));
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_push_front(Deviant const&, Ref element) {
    insertAt(0, valueOf<T>(element));
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_replace(Deviant const&,
                                                                  int index,
                                                                  Ref element) {
    internal::checkElementIndex(index, size());
    T const& value = valueOf<T>(element);
    if (int const present = indexOf(value); present == index || present == size()) {
        Values<T>& values = container().values;
        values.replace(values.begin() + index, value);
    }
}

template <class T, bool Unique, class Key>
bool MultiIndexImplForPrimitives<T, Unique, Key>::generic_contains(Deviant const&,
                                                                   Ref element) const {
    return size() != 0 && container_->values.template get<1>().count(valueOf<T>(element)) != 0;
}

template <class T, bool Unique, class Key>
int MultiIndexImplForPrimitives<T, Unique, Key>::generic_removeAll(Deviant const&, Ref element) {
    int const index = indexOf(valueOf<T>(element));
    if (index == size()) {
        return 0;
    }
    eraseRange(index, index + 1);
    return 1;
}

template class MultiIndexImplForPrimitives<Integer, true, identity<Integer>>;
template class MultiIndexImplForPrimitives<Real, true, identity<Real>>;
template class MultiIndexImplForPrimitives<String, true, identity<String>>;
template class MultiIndexImplForPrimitives<ExternalToolInfo, true, identity<ExternalToolInfo>>;

} // namespace QOB::MultiIndexImplInternal
