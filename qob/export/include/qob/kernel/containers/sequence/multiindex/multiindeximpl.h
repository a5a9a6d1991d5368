#pragma once

#include "qob/kernel/containers/sequence/list/listqimpl.h"
#include "qob/kernel/containers/sequence/multiindex/referencestorage.h"
#include "qob/kernel/containers/sequence/sequencenames.h"
#include "qob/kernel/containers/sequence/sequenceproxy.h"

#include <boost/multi_index/identity_fwd.hpp>

#include <memory>

namespace QOB {

using boost::multi_index::identity;

namespace MultiIndexImplInternal {

/// Distinct values in order of insertion: an equal second one is ignored. A member of an object's
/// state: it isn't freed by its count, and it ignores deviants. Allocates its container with the
/// first element.
template <class T, bool Unique, class Key>
class MultiIndexImplForPrimitives : public Generic::SequenceIntf {
    static_assert(Unique);
    using Ref = Generic::Ref;
    using IteratorIntf = Generic::IteratorIntf;
    using IteratorPtr = Generic::IteratorPtr;
    struct Container;

public:
    class Iterator;

    MultiIndexImplForPrimitives() noexcept;
    MultiIndexImplForPrimitives(MultiIndexImplForPrimitives const& other);
    MultiIndexImplForPrimitives& operator=(MultiIndexImplForPrimitives const& other);
    ~MultiIndexImplForPrimitives() override;

    void incRef() const override {}
    void decRef() const override {}
    Ref generic_at(Deviant const&, int index) const override;
    Ref generic_front(Deviant const&) const override;
    Ref generic_back(Deviant const&) const override;
    IteratorPtr generic_begin(Deviant const&) const override;
    IteratorPtr generic_end(Deviant const&) const override;
    void generic_clear(Deviant const&) override;
    int generic_size(Deviant const&) const override;
    bool generic_empty(Deviant const&) const override;
    IteratorPtr generic_insert(Deviant const&, IteratorIntf const* position, Ref element) override;
    void generic_insert(Deviant const&, int index, Ref element) override;
    void generic_erase(Deviant const&, int index) override;
    IteratorPtr
    generic_erase(Deviant const&, IteratorIntf const* first, IteratorIntf const* last) override;
    IteratorPtr generic_erase(Deviant const&, IteratorIntf const* position) override;
    void generic_pop_back(Deviant const&) override;
    void generic_pop_front(Deviant const&) override;
    void generic_push_back(Deviant const&, Ref element) override;
    void generic_push_front(Deviant const&, Ref element) override;
    void generic_replace(Deviant const&, int index, Ref element) override;
    bool generic_contains(Deviant const&, Ref element) const override;
    int generic_removeAll(Deviant const&, Ref element) override;

private:
    /// For writing: shared with no other sequence or iterator.
    Container& container();
    int size() const noexcept;
    /// The index of the value; the size if it isn't there.
    int indexOf(T const& value) const;
    /// The index of the iterator's place.
    int indexOf(IteratorIntf const* position) const;
    void insertAt(int index, T const& value);
    void eraseRange(int first, int last);

    std::shared_ptr<Container> container_;
};

/// Distinct objects in order of insertion, each counted once. Every sequence of references uses it,
/// whatever the class of its elements. An object is the same in every deviant.
template <bool Unique, class Key>
class MultiIndexImplForRefs;

using ReferenceKey = identity<NSInterface::ClassObjectIntf const*>;

template <>
class QOB_EXPORT MultiIndexImplForRefs<true, ReferenceKey> : public Generic::SequenceIntf {
    using Ref = Generic::Ref;
    using IteratorIntf = Generic::IteratorIntf;
    using IteratorPtr = Generic::IteratorPtr;

public:
    class Iterator;

    /// The object in the `data` of a Ref, if it is of the sequence's element class. Raises
    /// QOB::Exception otherwise, also for null.
    using ElementCast = NSInterface::ClassObjectIntf* (*)(void* data);

    ~MultiIndexImplForRefs() override;

    /// The elements, for code that knows their class.
    ReferenceStorage const& storage() const noexcept { return storage_; }
    ReferenceStorage& storage() noexcept { return storage_; }

    /// The container, if the sequence is one; otherwise null.
    static MultiIndexImplForRefs* of(SequenceIntf* sequence) noexcept {
        return sequence->holdsReferences() ? static_cast<MultiIndexImplForRefs*>(sequence)
                                           : nullptr;
    }
    /// Whether the object is in the list. Raises for one of another class than the elements'.
    bool has(NSInterface::ClassObjectIntf* object) const;
    /// The same for an object that `known` accepts.
    bool has(NSInterface::ClassObjectIntf* object, ElementCast known) const;
    /// Both return whether the list has changed, and raise for an object as `has` does.
    bool appendIfNew(NSInterface::ClassObjectIntf* object, ElementCast known);
    bool eraseIfThere(NSInterface::ClassObjectIntf* object, ElementCast known);

    void incRef() const override {}
    void decRef() const override {}
    int numRef() const override { return 0; }
    Ref generic_at(Deviant const& deviant, int index) const override;
    Ref generic_front(Deviant const& deviant) const override;
    Ref generic_back(Deviant const& deviant) const override;
    IteratorPtr generic_begin(Deviant const&) const override;
    IteratorPtr generic_end(Deviant const&) const override;
    void generic_clear(Deviant const&) override;
    int generic_size(Deviant const&) const override;
    bool generic_empty(Deviant const&) const override;
    IteratorPtr generic_insert(Deviant const&, IteratorIntf const* position, Ref element) override;
    void generic_insert(Deviant const&, int index, Ref element) override;
    void generic_erase(Deviant const&, int index) override;
    IteratorPtr
    generic_erase(Deviant const&, IteratorIntf const* first, IteratorIntf const* last) override;
    IteratorPtr generic_erase(Deviant const&, IteratorIntf const* position) override;
    void generic_pop_back(Deviant const&) override;
    void generic_pop_front(Deviant const&) override;
    void generic_push_back(Deviant const&, Ref element) override;
    void generic_push_front(Deviant const&, Ref element) override;
    /// If the new element is elsewhere in the sequence, the sequence doesn't change and the element
    /// at `index` loses one count.
    void generic_replace(Deviant const&, int index, Ref element) override;
    bool generic_contains(Deviant const&, Ref element) const override;
    int generic_removeAll(Deviant const&, Ref element) override;
    bool specialized_equal(Deviant const& deviant,
                           SequenceIntf const* other,
                           Deviant const& otherDeviant,
                           bool& handled) const override;
    bool specialized_assign(Deviant const& deviant,
                            SequenceIntf const* other,
                            Deviant const& otherDeviant,
                            bool& handled) override;

protected:
    explicit MultiIndexImplForRefs(ElementCast elementCast) noexcept : elementCast_(elementCast) {
        setHoldsReferences();
        belongToState();
    }
    MultiIndexImplForRefs(MultiIndexImplForRefs const& other);
    MultiIndexImplForRefs& operator=(MultiIndexImplForRefs const& other);

private:
    /// One count is the state's and is never given back, so that handles count without a call.
    void belongToState() noexcept {
        countInPlace();
        referenceCount_ = 1;
    }
    int size() const noexcept { return static_cast<int>(storage_.size()); }
    /// The index of the iterator's place.
    std::size_t indexOf(IteratorIntf const* position) const;

    ReferenceStorage storage_;
    ElementCast elementCast_;
};

/// Raises "null object while inserting into <name>".
[[noreturn]] QOB_EXPORT void failNullElement(char const* sequenceName);

template <class T>
NSInterface::ClassObjectIntf* castElement(void* data) {
    auto* const object = static_cast<NSInterface::ClassObjectIntf*>(data);
    if (auto* const element = castObject<typename T::Interface>(object)) {
        return castObject<NSInterface::ClassObjectIntf>(element);
    }
    failNullElement(SequenceNames<T>::names[0][0]);
}

extern template class QOB_EXPORT MultiIndexImplForPrimitives<Integer, true, identity<Integer>>;
extern template class QOB_EXPORT MultiIndexImplForPrimitives<Real, true, identity<Real>>;
extern template class QOB_EXPORT MultiIndexImplForPrimitives<String, true, identity<String>>;
extern template class QOB_EXPORT
    MultiIndexImplForPrimitives<ExternalToolInfo, true, identity<ExternalToolInfo>>;

} // namespace MultiIndexImplInternal

template <class T, bool Unique, class Key, class IsPrimitive>
class MultiIndexImplBase;

template <class T>
class MultiIndexImplBase<T, true, identity<T>, TRUE_TYPE>
    : public MultiIndexImplInternal::MultiIndexImplForPrimitives<T, true, identity<T>> {};

template <class T>
class MultiIndexImplBase<T, true, identity<T>, FALSE_TYPE>
    : public MultiIndexImplInternal::MultiIndexImplForRefs<true,
                                                           MultiIndexImplInternal::ReferenceKey> {
    using Base =
        MultiIndexImplInternal::MultiIndexImplForRefs<true, MultiIndexImplInternal::ReferenceKey>;

protected:
    MultiIndexImplBase() noexcept : Base(&MultiIndexImplInternal::castElement<T>) {}
};

/// The container of a unique multi-valued property. `T` is a value class or a handle class with
/// SequenceNames.
template <class T, bool Unique = true, class Key = identity<T>>
class MultiIndexImpl final
    : public MultiIndexImplBase<T, Unique, Key, std::bool_constant<!Generic::ObjectElement<T>>> {
public:
    char const* generic_getLumvoName(bool immutableSequence,
                                     bool immutableElements,
                                     char const*) const override {
        return SequenceNames<T>::names[immutableSequence ? 1 : 0][immutableElements ? 1 : 0];
    }
};

} // namespace QOB
