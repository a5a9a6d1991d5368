#pragma once

#include <type_traits>

namespace QOB {

/// Converts a pointer to a class to one of its bases. If a class inherits the base twice, its
/// `PrimaryBase` names the direct base to go through: the first.
template <class Base, class Derived>
auto upcast(Derived* object) noexcept {
    using Target = std::conditional_t<std::is_const_v<Derived>, Base const, Base>;
    if constexpr (std::is_convertible_v<Derived*, Target*>) {
        return static_cast<Target*>(object);
    } else {
        using Primary = typename Derived::PrimaryBase;
        using Step = std::conditional_t<std::is_const_v<Derived>, Primary const, Primary>;
        return static_cast<Target*>(static_cast<Step*>(object));
    }
}

/// A class that is the second base of some objects, so that its address isn't the one the kernel
/// knows. From such a pointer, only the object's `cast` leads to the bases that are inherited
/// twice. The class declares it itself.
template <class Intf>
concept MayBeSecondPart = std::is_same_v<typename Intf::SecondPart, Intf>;

namespace internal {

template <class>
struct DeclaringClass;
template <class Class, class Result, class... Arguments>
struct DeclaringClass<Result (Class::*)(Arguments...)> {
    using Type = Class;
};
template <class Class, class Result, class... Arguments>
struct DeclaringClass<Result (Class::*)(Arguments...) const> {
    using Type = Class;
};

} // namespace internal

/// The class that declares a member function.
template <auto Operation>
using DeclaringClassOf = typename internal::DeclaringClass<decltype(Operation)>::Type;

/// An object as the class that declares the operation.
template <auto Operation, class Derived>
auto receiverOf(Derived* object) noexcept {
    return upcast<DeclaringClassOf<Operation>>(object);
}

} // namespace QOB
