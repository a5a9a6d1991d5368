#pragma once

#include <type_traits>

namespace QOB {

/// A pointer to a class as a pointer to one of its bases. Where a class holds the base twice, its
/// `PrimaryBase` names the direct base whose path is meant: the first.
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

/// A class that lies in the second part of some objects, which is not what the kernel knows them
/// by: only the object's `cast` leads from there to the bases that are there twice. It says so
/// itself.
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

/// An object seen as the class that declares the operation.
template <auto Operation, class Derived>
auto receiverOf(Derived* object) noexcept {
    return upcast<DeclaringClassOf<Operation>>(object);
}

} // namespace QOB
