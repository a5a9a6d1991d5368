#pragma once

#include <optional>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesreal.h>

namespace velum::check {

/// The numbers from one to another, both included.
struct Interval {
    double lowest;
    double highest;
};

/// The whole numbers that the storage of an integer, a fixed point type or an enumeration can hold;
/// none if the type is another one, or its size is unknown.
std::optional<Interval> storageOf(Zorvane::metamodel::types::Real const& type);

} // namespace velum::check
