#pragma once

#include "qob/qob/deviant.h"

/// Inline functions of which a library also exports a copy, for callers that look them up by name.
/// The source that is to hold the copies instantiates one of these.
namespace QOB::internal {

/// Of the handles for reading of one class.
template <class Handle>
struct OutOfLineHandle {
    [[gnu::used]] static constexpr Handle& (Handle::*assign)(Handle const&) = &Handle::operator=;
    [[gnu::used]] static constexpr void (Handle::*setDeviant)(Deviant) const = &Handle::setDeviant;
};

/// Of one function.
template <auto Function>
struct OutOfLineFunction {
    [[gnu::used]] static constexpr auto pointer = Function;
};

} // namespace QOB::internal
