#pragma once

#include "qob/qob/deviant.h"

/// Inline functions that a library also exports, for callers that look them up by name. The source
/// file that holds the exported copies instantiates one of these.
namespace QOB::internal {

/// For the read-only handle of one class.
template <class Handle>
struct OutOfLineHandle {
    [[gnu::used]] static constexpr Handle& (Handle::*assign)(Handle const&) = &Handle::operator=;
    [[gnu::used]] static constexpr void (Handle::*setDeviant)(Deviant) const = &Handle::setDeviant;
};

/// For one function.
template <auto Function>
struct OutOfLineFunction {
    [[gnu::used]] static constexpr auto pointer = Function;
};

} // namespace QOB::internal
