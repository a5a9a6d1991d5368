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

} // namespace QOB
