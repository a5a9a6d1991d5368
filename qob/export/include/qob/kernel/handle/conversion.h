#pragma once

#include "qob/kernel/upcast.h"
#include "qob/qob/refbase.h"

#include <concepts>
#include <type_traits>

namespace QOB {

/// A class that is a handle: it pairs a counted pointer to its interface class with a deviant.
template <class T>
concept AnyHandle = requires {
    typename T::Interface;
}
&&std::derived_from<T, RefBase<typename T::Interface*>>;

/// A handle for reading and writing.
template <class T>
concept MutableHandle = AnyHandle<T> && requires(T const& handle) {
    { handle.get() } -> std::same_as<typename T::Interface*>;
};

/// A handle that converts to `To` by a cast of the object; `To` itself is excluded.
template <class T, class To>
concept ConvertibleHandle = AnyHandle<T> && !std::derived_from<T, To>;

template <class T, class To>
concept ConvertibleMutableHandle = MutableHandle<T> && ConvertibleHandle<T, To>;

/// Whether every object that a `Handle` can refer to is an `Intf`. Such a conversion never gives an
/// empty handle, so it may be implicit.
template <class Handle, class Intf>
inline constexpr bool extends = std::is_base_of_v<Intf, typename Handle::Interface>;

/// A subclass of `Intf` that is the second base of some objects, so that converting a pointer to it
/// needs a cast of the object.
template <class From, class Intf>
concept BelowInSecondPart =
    MayBeSecondPart<From> && std::derived_from<From, Intf> && !std::same_as<From, Intf>;

/// A subclass of `Intf` that inherits it twice and always is an object's first base: its first
/// `Intf` is the object's.
template <class From, class Intf>
concept InheritsTwice =
    std::is_base_of_v<Intf, From> && !std::is_convertible_v<From*, Intf*> &&
    std::is_convertible_v<typename From::PrimaryBase*, Intf*> && !MayBeSecondPart<From>;

/// The object of a handle as interface class `Intf`; null if it isn't one. Casts the object at run
/// time only where the compiler can't decide, which includes classes that may be an object's second
/// base.
template <class Intf, AnyHandle Handle>
auto pointerFrom(Handle const& handle) {
    using From = decltype(handle.get());
    using To = std::conditional_t<std::is_const_v<std::remove_pointer_t<From>>, Intf const*, Intf*>;
    if constexpr (std::is_convertible_v<From, To> &&
                  !BelowInSecondPart<typename Handle::Interface, Intf>) {
        return static_cast<To>(handle.get());
    } else if constexpr (InheritsTwice<typename Handle::Interface, Intf>) {
        return static_cast<To>(upcast<Intf>(handle.get()));
    } else {
        return static_cast<To>(castObject<Intf>(handle.get()));
    }
}

} // namespace QOB
