#pragma once

#include "qob/qob/introspection.h"

namespace QOB {

namespace internal {
class PropertyIndex;
} // namespace internal

/// What leads from a live class to the functions of its instances: its record and how many
/// properties it declares. Null for a class that no library has bound.
struct ClassBinding {
    IntrospectiveMethods const* methods = nullptr;
    unsigned propertyCount = 0;
};

/// What leads from a live property to its values: the record of the class that declares it, and
/// its id there. Null for a property that no library has bound.
struct PropertyBinding {
    IntrospectiveMethods const* methods = nullptr;
    unsigned id = 0;

    friend bool operator==(PropertyBinding const&, PropertyBinding const&) = default;
};

} // namespace QOB
