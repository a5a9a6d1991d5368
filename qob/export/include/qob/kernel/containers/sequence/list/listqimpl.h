#pragma once

#include "qob/kernel/containers/sequence/list/cowwrapper.h"
#include "qob/kernel/containers/sequence/sequenceproxy.h"

#include <type_traits>
#include <vector>

namespace QOB {

using TRUE_TYPE = std::true_type;
using FALSE_TYPE = std::false_type;

namespace ListQImplInternal {

/// A list of values in order of insertion; values may repeat. A member of an object's state: it
/// isn't freed by its count, and it ignores deviants.
template <class T>
class ListQImplForPrimitives : public Generic::SequenceIntf {
    using Ref = Generic::Ref;
    using IteratorIntf = Generic::IteratorIntf;
    using IteratorPtr = Generic::IteratorPtr;

public:
    class Iterator;

    ListQImplForPrimitives() = default;
    ListQImplForPrimitives(ListQImplForPrimitives const& other);
    ListQImplForPrimitives& operator=(ListQImplForPrimitives const& other);
    ~ListQImplForPrimitives() override;

    /// The values, for code that knows the element type.
    std::vector<T> const& values() const noexcept { return values_.read(); }

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
    char const* generic_getLumvoName(bool, bool, char const* fallback) const override;
    int generic_removeAll(Deviant const& deviant, Ref element) override;
    bool specialized_equal(Deviant const& deviant,
                           SequenceIntf const* other,
                           Deviant const& otherDeviant,
                           bool& handled) const override;

private:
    std::ptrdiff_t offsetOf(IteratorIntf const* position) const;
    IteratorPtr iteratorAt(std::ptrdiff_t offset) const;
    void insertAt(std::ptrdiff_t offset, T const& value);
    IteratorPtr eraseRange(std::ptrdiff_t first, std::ptrdiff_t last);

    Performance::COWWrapperContainerSequential<std::vector<T>> values_;
};

extern template class QOB_EXPORT ListQImplForPrimitives<Integer>;
extern template class QOB_EXPORT ListQImplForPrimitives<Real>;
extern template class QOB_EXPORT ListQImplForPrimitives<String>;
extern template class QOB_EXPORT ListQImplForPrimitives<ExternalToolInfo>;
extern template class QOB_EXPORT ListQImplForPrimitives<Object>;

} // namespace ListQImplInternal

template <class T, class IsPrimitive>
class ListQImplBase;

template <class T>
class ListQImplBase<T, TRUE_TYPE> : public ListQImplInternal::ListQImplForPrimitives<T> {};

/// The container of a multi-valued property of a primitive type that isn't unique.
template <class T>
class ListQImpl : public ListQImplBase<T, TRUE_TYPE> {};

} // namespace QOB
