#pragma once

#include "qob/kernel/upcast.h"

#include <tuple>

namespace QOB {

namespace internal {

/// The class that declares a member function.
template <class>
struct DeclaringClass;
template <class Class, class Result, class... Arguments>
struct DeclaringClass<Result (Class::*)(Arguments...)> {
    using Type = Class;
};

} // namespace internal

/// What createObject calls to give a new object its first values: the operations `Set...`, in this
/// order, each with one value. The values are referred to, not kept: only for the length of a call.
template <auto... Set, class... Value>
auto setting(Value const&... values) {
    static_assert(sizeof...(Set) == sizeof...(Value));
    return [&values...](auto const& handle) {
        ((upcast<typename internal::DeclaringClass<decltype(Set)>::Type>(handle.get())->*Set)(
             handle.getDeviant(), values),
         ...);
    };
}

} // namespace QOB
