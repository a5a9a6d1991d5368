#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"

#include <boost/multi_index/identity.hpp>
#include <boost/multi_index/ordered_index.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>

#include <cmath>
#include <optional>

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

/// A node of the container; nothing in a sequence that has no container yet.
template <class T, bool Unique, class Key>
class MultiIndexImplForPrimitives<T, Unique, Key>::Iterator final : public IteratorProxy {
public:
    using Node = std::optional<typename Values<T>::const_iterator>;

    explicit Iterator(Node const& node) noexcept : node_(node) {}

    Node const& node() const noexcept { return node_; }

    Ref generic_value(Deviant const&) const override { return toRef(**node_); }
    void generic_next(Deviant const&) override { ++*node_; }
    void generic_prev(Deviant const&) override { --*node_; }
    IteratorPtr generic_clone() const override { return std::make_unique<Iterator>(node_); }
    bool generic_sameAs(IteratorIntf const* other) const override {
        auto const* const same = dynamic_cast<Iterator const*>(other);
        return same != nullptr && same->node_ == node_;
    }

    /// The place of an iterator in the container, which is empty if the iterator has no node.
    static auto placeIn(Values<T> const& values, IteratorIntf const* position) {
        Node const& node = static_cast<Iterator const*>(position)->node_;
        return node ? *node : values.end();
    }

private:
    Node node_;
};

template <class T, bool Unique, class Key>
MultiIndexImplForPrimitives<T, Unique, Key>::MultiIndexImplForPrimitives() noexcept = default;

template <class T, bool Unique, class Key>
MultiIndexImplForPrimitives<T, Unique, Key>::MultiIndexImplForPrimitives(
    MultiIndexImplForPrimitives const& other)
    : SequenceIntf(other),
      container_(other.size() == 0 ? nullptr : std::make_unique<Container>(*other.container_)) {
}

template <class T, bool Unique, class Key>
MultiIndexImplForPrimitives<T, Unique, Key>&
MultiIndexImplForPrimitives<T, Unique, Key>::operator=(MultiIndexImplForPrimitives const& other) {
    container_ = other.size() == 0 ? nullptr : std::make_unique<Container>(*other.container_);
    return *this;
}

template <class T, bool Unique, class Key>
MultiIndexImplForPrimitives<T, Unique, Key>::~MultiIndexImplForPrimitives() = default;

template <class T, bool Unique, class Key>
auto MultiIndexImplForPrimitives<T, Unique, Key>::container() -> Container& {
    if (container_ == nullptr) {
        container_ = std::make_unique<Container>();
    }
    return *container_;
}

template <class T, bool Unique, class Key>
int MultiIndexImplForPrimitives<T, Unique, Key>::size() const noexcept {
    return container_ == nullptr ? 0 : static_cast<int>(container_->values.size());
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
    return std::make_unique<Iterator>(
        container_ == nullptr ? std::nullopt : typename Iterator::Node(container_->values.begin()));
}

template <class T, bool Unique, class Key>
IteratorPtr MultiIndexImplForPrimitives<T, Unique, Key>::generic_end(Deviant const&) const {
    return std::make_unique<Iterator>(
        container_ == nullptr ? std::nullopt : typename Iterator::Node(container_->values.end()));
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_clear(Deviant const&) {
    if (container_ != nullptr) {
        container_->values.clear();
    }
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
    Values<T>& values = container().values;
    return std::make_unique<Iterator>(
        values.insert(Iterator::placeIn(values, position), valueOf<T>(element)).first);
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_insert(Deviant const&,
                                                                 int index,
                                                                 Ref element) {
    internal::checkInsertIndex(index, size());
    Values<T>& values = container().values;
    values.insert(values.begin() + index, valueOf<T>(element));
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_erase(Deviant const&, int index) {
    internal::checkElementIndex(index, size());
    container_->values.erase(container_->values.begin() + index);
}

template <class T, bool Unique, class Key>
IteratorPtr MultiIndexImplForPrimitives<T, Unique, Key>::generic_erase(Deviant const&,
                                                                       IteratorIntf const* first,
                                                                       IteratorIntf const* last) {
    Values<T>& values = container().values;
    return std::make_unique<Iterator>(
        values.erase(Iterator::placeIn(values, first), Iterator::placeIn(values, last)));
}

template <class T, bool Unique, class Key>
IteratorPtr
MultiIndexImplForPrimitives<T, Unique, Key>::generic_erase(Deviant const&,
                                                           IteratorIntf const* position) {
    Values<T>& values = container().values;
    return std::make_unique<Iterator>(values.erase(Iterator::placeIn(values, position)));
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_pop_back(Deviant const&) {
    internal::checkNotEmpty(size() == 0);
    container_->values.pop_back();
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_pop_front(Deviant const&) {
    internal::checkNotEmpty(size() == 0);
    container_->values.pop_front();
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_push_back(Deviant const&, Ref element) {
    container().values.push_back(valueOf<T>(element));
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_push_front(Deviant const&, Ref element) {
    container().values.push_front(valueOf<T>(element));
}

template <class T, bool Unique, class Key>
void MultiIndexImplForPrimitives<T, Unique, Key>::generic_replace(Deviant const&,
                                                                  int index,
                                                                  Ref element) {
    internal::checkElementIndex(index, size());
    container_->values.replace(container_->values.begin() + index, valueOf<T>(element));
}

template <class T, bool Unique, class Key>
bool MultiIndexImplForPrimitives<T, Unique, Key>::generic_contains(Deviant const&,
                                                                   Ref element) const {
    return size() != 0 && container_->values.template get<1>().count(valueOf<T>(element)) != 0;
}

template <class T, bool Unique, class Key>
int MultiIndexImplForPrimitives<T, Unique, Key>::generic_removeAll(Deviant const&, Ref element) {
    return size() == 0
               ? 0
               : static_cast<int>(container_->values.template get<1>().erase(valueOf<T>(element)));
}

template class MultiIndexImplForPrimitives<Integer, true, identity<Integer>>;
template class MultiIndexImplForPrimitives<Real, true, identity<Real>>;
template class MultiIndexImplForPrimitives<String, true, identity<String>>;
template class MultiIndexImplForPrimitives<ExternalToolInfo, true, identity<ExternalToolInfo>>;

} // namespace QOB::MultiIndexImplInternal
