#pragma once

#include "qob/kernel/upcast.h"

#include <tuple>

namespace QOB {

/// What createObject calls to give a new object its first values: the operations `Set...`, in this
/// order, each with one value. The values are referred to, not kept: only for the length of a call.
template <auto... Set, class... Value>
auto setting(Value const&... values) {
    static_assert(sizeof...(Set) == sizeof...(Value));
    return [&values...](auto const& handle) {
        ((receiverOf<Set>(handle.get())->*Set)(handle.getDeviant(), values), ...);
    };
}

} // namespace QOB
