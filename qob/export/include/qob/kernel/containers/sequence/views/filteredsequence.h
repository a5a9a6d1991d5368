#pragma once

#include "qob/kernel/containers/sequence/sequenceproxy.h"
#include "qob/kernel/containers/sequence/sequenceref.h"

#include <utility>

namespace QOB::filtered_sequence_internal {

/// How a filtered sequence turns elements of its inner sequence into its own, and back.
class GenericFilter {
public:
    using Ref = Generic::Ref;

    struct Table {
        /// Converts an element to the form that the filtered sequence shows; null if it is shown
        /// unchanged.
        Ref (*convert)(Ref element);
        /// Converts an element of the filtered sequence to one of the inner sequence; without data
        /// if the inner sequence can't contain it.
        Ref (*convertBack)(Ref element);
    };

    /// From objects of class `Source` to a wider class: the same objects.
    template <class Source>
    static GenericFilter objects() {
        static constexpr Table table{nullptr, [](Ref element) {
                                         return castObject<typename Source::Interface>(
                                                    Generic::objectOf(element)) != nullptr
                                                    ? element
                                                    : Ref();
                                     }};
        return GenericFilter(table);
    }

    /// From a value class to boxed values. Unboxing a value of another type raises what the value
    /// class raises.
    template <class Value>
    static GenericFilter boxes() {
        static constexpr Table table{
            [](Ref element) { return Generic::toRef(Object(Generic::valueOf<Value>(element))); },
            [](Ref element) { return Generic::toRef(Value(Generic::valueOf<Object>(element))); }};
        return GenericFilter(table);
    }

    /// From objects of any class to boxes of these objects, for code that treats values and objects
    /// alike.
    static GenericFilter boxedObjects() {
        static constexpr Table table{
            [](Ref element) {
                return Generic::toRef(Object(Generic::objectOf(element), element.deviant));
            },
            [](Ref element) {
                Object const& object = Generic::valueOf<Object>(element);
                auto* const found = castObject<NSInterface::ClassObjectIntf>(object.get());
                return found != nullptr ? Generic::objectRef(found, object.getDeviant()) : Ref();
            }};
        return GenericFilter(table);
    }

    bool isIdentity() const noexcept { return table_->convert == nullptr; }
    Ref convert(Ref element) const {
        return isIdentity() ? element : table_->convert(std::move(element));
    }
    Ref convertBack(Ref element) const { return table_->convertBack(std::move(element)); }

private:
    explicit GenericFilter(Table const& table) noexcept : table_(&table) {}

    Table const* table_;
};

/// A sequence whose elements are seen as another type. Stores no elements and no positions: it
/// shows the current contents of the inner sequence. Writes are passed on; an element that the
/// inner sequence can't contain is never found, and removing it does nothing.
class QOB_EXPORT GenericFilteredSequence final : public SequenceProxy {
    using Ref = Generic::Ref;
    using IteratorIntf = Generic::IteratorIntf;
    using IteratorPtr = Generic::IteratorPtr;

public:
    /// Keeps the inner sequence alive; it must not be null.
    GenericFilteredSequence(Generic::SequencePtr inner, GenericFilter const& filter);
    ~GenericFilteredSequence() override;

    /// Whether the inner sequence can contain the element's class.
    bool takes(Ref element) const {
        return filter_.convertBack(std::move(element)).data != nullptr;
    }
    void checkInsertable(Deviant const& deviant, Ref const& element) const override;

    Ref generic_at(Deviant const& deviant, int index) const override;
    Ref generic_front(Deviant const& deviant) const override;
    Ref generic_back(Deviant const& deviant) const override;
    IteratorPtr generic_begin(Deviant const& deviant) const override;
    IteratorPtr generic_end(Deviant const& deviant) const override;
    void generic_clear(Deviant const& deviant) override;
    int generic_size(Deviant const& deviant) const override;
    bool generic_empty(Deviant const& deviant) const override;
    IteratorPtr
    generic_insert(Deviant const& deviant, IteratorIntf const* position, Ref element) override;
    void generic_insert(Deviant const& deviant, int index, Ref element) override;
    void generic_erase(Deviant const& deviant, int index) override;
    IteratorPtr generic_erase(Deviant const& deviant,
                              IteratorIntf const* first,
                              IteratorIntf const* last) override;
    IteratorPtr generic_erase(Deviant const& deviant, IteratorIntf const* position) override;
    void generic_pop_back(Deviant const& deviant) override;
    void generic_pop_front(Deviant const& deviant) override;
    void generic_push_back(Deviant const& deviant, Ref element) override;
    void generic_push_front(Deviant const& deviant, Ref element) override;
    void generic_replace(Deviant const& deviant, int index, Ref element) override;
    bool generic_contains(Deviant const& deviant, Ref element) const override;
    char const* generic_getLumvoName(bool immutableSequence,
                                     bool immutableElements,
                                     char const* fallback) const override;
    int generic_removeAll(Deviant const& deviant, Ref element) override;

private:
    class Iterator;

    bool canHold(Deviant const& deviant, Ref const& converted) const;
    IteratorPtr wrap(IteratorPtr position) const;
    IteratorIntf const* unwrap(IteratorIntf const* position) const;

    Generic::SequencePtr inner_;
    GenericFilter filter_;
};

} // namespace QOB::filtered_sequence_internal
