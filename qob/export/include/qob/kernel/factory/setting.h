#pragma once

#include "qob/kernel/upcast.h"

#include <tuple>

namespace QOB {

/// The initializer for createObject: calls the operations `Set...` in this order, each with one
/// value. Refers to the values without copying them, so it must not outlive the call.
template <auto... Set, class... Value>
auto setting(Value const&... values) {
    static_assert(sizeof...(Set) == sizeof...(Value));
    return [&values...](auto const& handle) {
        ((receiverOf<Set>(handle.get())->*Set)(handle.getDeviant(), values), ...);
    };
}

} // namespace QOB
