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

/// A handle from which `To` can be made by asking the object; copies are not meant.
template <class T, class To>
concept ConvertibleHandle = AnyHandle<T> && !std::derived_from<T, To>;

template <class T, class To>
concept ConvertibleMutableHandle = MutableHandle<T> && ConvertibleHandle<T, To>;

/// Whether every object that a handle of type `Handle` can hold is an `Intf`: the conversion can't
/// come out empty, so it may be implicit.
template <class Handle, class Intf>
inline constexpr bool extends = std::is_base_of_v<Intf, typename Handle::Interface>;

/// A class below `Intf` that lies in the second part of some objects: no pointer to it is converted
/// without asking the object.
template <class From, class Intf>
concept BelowInSecondPart =
    MayBeSecondPart<From> && std::derived_from<From, Intf> && !std::same_as<From, Intf>;

/// The object of a handle seen as interface class `Intf`; null if it isn't one. Asks the object
/// only where the compiler can't tell: also for a class that holds the base twice, and for one that
/// may lie in an object's second part.
template <class Intf, AnyHandle Handle>
auto pointerFrom(Handle const& handle) {
    using From = decltype(handle.get());
    using To = std::conditional_t<std::is_const_v<std::remove_pointer_t<From>>, Intf const*, Intf*>;
    if constexpr (std::is_convertible_v<From, To> &&
                  !BelowInSecondPart<typename Handle::Interface, Intf>) {
        return static_cast<To>(handle.get());
    } else {
        return static_cast<To>(castObject<Intf>(handle.get()));
    }
}

} // namespace QOB
