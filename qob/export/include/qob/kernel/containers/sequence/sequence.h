#pragma once

#include "qob/kernel/containers/sequence/forwardingsequence.h"
#include "qob/kernel/containers/sequence/list/listqimpl.h"
#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "qob/kernel/containers/sequence/sequenceref.h"
#include "qob/kernel/containers/sequence/views/combinedsequence.h"
#include "qob/kernel/containers/sequence/views/filteredsequence.h"

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <type_traits>

namespace QOB {

/// A position in a sequence of `T`. Returns its elements by value.
///
/// Keeps its view alive and shows the elements that were there when the iterator was created,
/// whatever happens to the sequence or to its object, so a loop over a sequence may write to it. In
/// a combined sequence it shows each part as it is when the iterator enters it. Iterators from two
/// calls of a getter are equal at the same place. Reading at the end, stepping beyond an end, and
/// inserting or erasing at a place that the sequence no longer has raise QOB::Exception. Insertion
/// and removal invalidate the iterators passed to them.
template <class T>
class SequenceIterator {
public:
    using iterator_concept = std::bidirectional_iterator_tag;
    // References are values, but the sequence can be traversed repeatedly and backwards.
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using reference = T;

    /// Keeps the element alive for the duration of an expression.
    class ElementHolder {
    public:
        explicit ElementHolder(T value) : value_(std::move(value)) {}
        T const* operator->() const noexcept { return &value_; }

    private:
        T value_;
    };

    using pointer = ElementHolder;

    SequenceIterator() noexcept = default;
    SequenceIterator(Generic::SequenceRef sequence, Generic::IteratorPtr position) noexcept
        : sequence_(std::move(sequence)), position_(std::move(position)) {}
    SequenceIterator(SequenceIterator const& other)
        : sequence_(other.sequence_),
          position_(other.position_ == nullptr ? nullptr : other.position_->generic_clone()) {}
    SequenceIterator(SequenceIterator&&) noexcept = default;
    SequenceIterator& operator=(SequenceIterator other) noexcept {
        std::swap(sequence_, other.sequence_);
        std::swap(position_, other.position_);
        return *this;
    }
    ~SequenceIterator() = default;

    T operator*() const {
        return Generic::fromRef<T>(position()->generic_value(sequence_.getDeviant()));
    }
    ElementHolder operator->() const { return ElementHolder(**this); }
    SequenceIterator& operator++() {
        position()->generic_next(sequence_.getDeviant());
        return *this;
    }
    SequenceIterator operator++(int) {
        SequenceIterator old(*this);
        ++*this;
        return old;
    }
    SequenceIterator& operator--() {
        position()->generic_prev(sequence_.getDeviant());
        return *this;
    }
    SequenceIterator operator--(int) {
        SequenceIterator old(*this);
        --*this;
        return old;
    }
    friend bool operator==(SequenceIterator const& a, SequenceIterator const& b) {
        return a.position_ == nullptr || b.position_ == nullptr
                   ? a.position_ == b.position_
                   : a.position_->generic_sameAs(b.position_.get());
    }

    /// Raises QOB::Exception for a default iterator.
    Generic::IteratorIntf const* getImplementation() const { return position(); }

private:
    Generic::IteratorIntf* position() const {
        internal::checkPlace(position_ != nullptr);
        return position_.get();
    }

    Generic::SequenceRef sequence_;
    Generic::IteratorPtr position_;
};

namespace internal {

/// True if `From` is a handle of the class of `To` or of a subclass, and writable if `To` is.
template <class From, class To>
concept WidensTo =
    !std::is_same_v<From, To> && Generic::ObjectElement<From> && Generic::ObjectElement<To> &&
    std::is_base_of_v<typename To::Interface, typename From::Interface> &&
    (MutableHandle<From> || !MutableHandle<To>);

/// A view of the sequence that takes only objects of the class of `From`.
template <class From>
Generic::SequenceRef filtered(Generic::SequenceRef const& sequence) {
    using filtered_sequence_internal::GenericFilter;
    using filtered_sequence_internal::GenericFilteredSequence;
    sequence.access();
    return {new GenericFilteredSequence(sequence.pointer(), GenericFilter::objects<From>()),
            sequence.getDeviant()};
}

/// The sequence as a sequence of `To`. Handles of the same class need no view.
template <class From, class To>
requires WidensTo<From, To> Generic::SequenceRef widened(Generic::SequenceRef const& sequence) {
    if constexpr (std::is_same_v<typename From::Interface, typename To::Interface>) {
        sequence.access();
        return sequence;
    } else {
        return filtered<From>(sequence);
    }
}

/// Only the untyped handle itself, not a typed one derived from it.
template <class T>
concept UntypedSequence = std::same_as<T, Generic::SequenceRef>;

} // namespace internal

/// A sequence of `T`, for reading: a counted sequence and the deviant in which to see it. A
/// default-constructed one is null, and every operation on it raises QOB::Exception. A view shows
/// each deviant its own state.
template <class T>
class ImmutableSequence : public Generic::SequenceRef {
public:
    using value_type = T;
    using iterator = SequenceIterator<T>;
    using const_iterator = SequenceIterator<T>;
    using size_type = int;
    using difference_type = std::ptrdiff_t;

    ImmutableSequence() noexcept = default;
    ImmutableSequence(Generic::SequenceIntf* sequence, Deviant deviant)
        : SequenceRef(sequence, deviant) {}
    /// The elements must be of class `T`: an object of another class shows as an empty handle, and
    /// a value of another type raises QOB::Exception.
    template <internal::UntypedSequence Untyped>
    explicit ImmutableSequence(Untyped sequence) : SequenceRef(std::move(sequence)) {}
    /// From a sequence of a subclass, or from a writable one. Raises QOB::Exception if it is null.
    template <class U>
    requires internal::WidensTo<U, T> ImmutableSequence(ImmutableSequence<U> const& other)
        : SequenceRef(internal::widened<U, T>(other)) {}

    int size() const { return generic_size(); }
    bool empty() const { return generic_empty(); }
    /// Raises QOB::Exception unless 0 <= index < size().
    T at(int index) const { return Generic::fromRef<T>(generic_at(index)); }
    T operator[](int index) const { return at(index); }
    /// Raise QOB::Exception on an empty sequence.
    T front() const { return Generic::fromRef<T>(generic_front()); }
    T back() const { return Generic::fromRef<T>(generic_back()); }
    bool contains(T const& element) const { return generic_contains(Generic::toRef(element)); }

    iterator begin() const { return {*this, generic_begin()}; }
    iterator end() const { return {*this, generic_end()}; }
};

/// A sequence of `T`. Writes act in the handle's deviant; a write through a view does everything
/// that a write to the property does.
template <class T>
class Sequence : public ImmutableSequence<T> {
public:
    using iterator = typename ImmutableSequence<T>::iterator;

    Sequence() noexcept = default;
    Sequence(Generic::SequenceIntf* sequence, Deviant deviant)
        : ImmutableSequence<T>(sequence, deviant) {}
    /// Like the constructor of ImmutableSequence.
    template <internal::UntypedSequence Untyped>
    explicit Sequence(Untyped sequence) : ImmutableSequence<T>(std::move(sequence)) {}
    /// From a writable sequence of a subclass. Raises QOB::Exception if it is null.
    template <class U>
    requires internal::WidensTo<U, T> Sequence(Sequence<U> const& other)
        : ImmutableSequence<T>(internal::widened<U, T>(other)) {}

    /// In a sequence of distinct elements, an element that is already there stays in its place.
    void push_back(T const& element) const { this->generic_push_back(Generic::toRef(element)); }
    void push_front(T const& element) const { this->generic_push_front(Generic::toRef(element)); }
    /// Inserts before the element at `index`, which may be the size.
    void insert(int index, T const& element) const {
        this->generic_insert(index, Generic::toRef(element));
    }
    /// Inserts before the position and returns the position of the element.
    iterator insert(iterator const& position, T const& element) const {
        return {*this, this->generic_insert(position.getImplementation(), Generic::toRef(element))};
    }
    void erase(int index) const { this->generic_erase(index); }
    /// Returns the position after the erased elements.
    iterator erase(iterator const& position) const {
        return {*this, this->generic_erase(position.getImplementation())};
    }
    iterator erase(iterator const& first, iterator const& last) const {
        return {*this, this->generic_erase(first.getImplementation(), last.getImplementation())};
    }
    void pop_back() const { this->generic_pop_back(); }
    void pop_front() const { this->generic_pop_front(); }
    /// Does nothing if the object is already elsewhere in the sequence.
    void replace(int index, T const& element) const {
        Generic::Ref ref = Generic::toRef(element);
        if constexpr (Generic::ObjectElement<T>) {
            if (this->generic_at(index).data == ref.data || this->generic_contains(ref)) {
                return;
            }
        }
        this->generic_replace(index, std::move(ref));
    }
    /// Erases every element that equals the given one; returns how many there were.
    int removeAll(T const& element) const {
        return this->generic_removeAll(Generic::toRef(element));
    }
    void clear() const { this->generic_clear(); }
    /// Replaces the contents by those of the other sequence.
    void assign(ImmutableSequence<T> const& other) const { this->generic_assign(other); }
};

namespace internal {

template <class T>
struct OwnContainer {
    using type = ListQImpl<T>;
};
template <Generic::ObjectElement T>
struct OwnContainer<T> {
    using type = MultiIndexImpl<T>;
};

} // namespace internal

/// A free-standing sequence, owned by its handles: of values, which may repeat, or of distinct
/// objects. Objects are seen in `deviant`.
template <class T>
Sequence<T> MakeSequence( // NOLINT(readability-identifier-naming): the failure texts name it
    Deviant deviant = {},
    std::initializer_list<T> elements = {}) {
    Sequence<T> result(new OwnedSequence<typename internal::OwnContainer<T>::type>, deviant);
    for (T const& element : elements) {
        result.push_back(element);
    }
    return result;
}

/// Builds the combination of several sequences as one of `T`, each part seen as one of `T`, in the
/// order in which they are added:
///
///     return SequenceCombination<Element>(deviant,
///     2).add(getComments(deviant)).add(getLiterals(deviant));
template <class T>
class SequenceCombination {
    using GenericCombinedSequence = combined_sequence_internal::GenericCombinedSequence;

public:
    SequenceCombination(Deviant deviant, unsigned parts)
        : combined_(new GenericCombinedSequence), deviant_(deviant) {
        combined_->reserve(parts);
    }

    /// Raises QOB::Exception for a null part.
    template <class U>
    requires(std::same_as<U, T> ||
             internal::WidensTo<U, T>) SequenceCombination& add(Sequence<U> const& part) {
        combined_->append(internal::filtered<U>(part).pointer());
        return *this;
    }

    operator Sequence<T>() const { return {combined_.get(), deviant_}; }

private:
    Generic::SmartPtr<GenericCombinedSequence, Generic::ReferenceCounted> combined_;
    Deviant deviant_;
};

/// The sequence with each value boxed, for code that knows no value classes. Writes are passed on.
template <class Value>
Generic::SequenceRef asObjects(Sequence<Value> const& sequence) {
    using filtered_sequence_internal::GenericFilter;
    using filtered_sequence_internal::GenericFilteredSequence;
    sequence.access();
    return {new GenericFilteredSequence(sequence.pointer(), GenericFilter::boxes<Value>()),
            sequence.getDeviant()};
}

// The members of object handles that return sequences
// --------------------------------------------------

template <class Base>
ImmutableSequence<Object> ClassObjectReading<Base>::get(ImmutableProperty const& property) const {
    return (*this)->get(this->getDeviant(), property);
}
template <class Base>
ImmutableSequence<Object> ClassObjectReading<Base>::get(String name) const {
    return (*this)->get(this->getDeviant(), std::move(name));
}
// Read-only use of a view that can write.
template <class Base>
ImmutableSequence<ImmutableClassObject> ClassObjectReading<Base>::getContaineeQOBs() const {
    return (*this)->getContaineeQOBsWithoutAssociation(this->getDeviant());
}
template <class Base>
ImmutableSequence<ImmutableClassObject>
ClassObjectReading<Base>::getContaineeQOBsWithoutAssociation() const {
    return (*this)->getContaineeQOBsWithoutAssociation(this->getDeviant());
}
template <class Base>
Sequence<ClassObject> ClassObjectWriting<Base>::getContaineeQOBs() const {
    return (*this)->getContaineeQOBs(this->getDeviant());
}
template <class Base>
Sequence<ClassObject> ClassObjectWriting<Base>::getContaineeQOBsWithoutAssociation() const {
    return (*this)->getContaineeQOBsWithoutAssociation(this->getDeviant());
}
template <class Base>
Sequence<StereotypeObject> ClassObjectWriting<Base>::getAppliedStereotypeInstances() const {
    return (*this)->getAppliedStereotypeInstances(this->getDeviant());
}
template <class Base>
Sequence<StereotypeObject>
ClassObjectWriting<Base>::getAppliedStereotypeInstancesWithoutAssociation() const {
    return (*this)->getAppliedStereotypeInstancesWithoutAssociation(this->getDeviant());
}
template <class Base>
Sequence<ExternalToolInfo> ClassObjectWriting<Base>::getExternalToolInfos() const {
    return (*this)->getExternalToolInfos(this->getDeviant());
}
template <class Base>
Sequence<ExternalToolInfo>
ClassObjectWriting<Base>::getExternalToolInfosWithoutAssociation() const {
    return (*this)->getExternalToolInfosWithoutAssociation(this->getDeviant());
}

} // namespace QOB
