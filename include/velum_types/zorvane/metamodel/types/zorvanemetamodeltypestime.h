#pragma once

#include "qob/qob/real.h"
#include "velum_types/zorvane/metamodel/types/quantity.h"
#include "velum_types/zorvane/metamodel/types/quantitytypeinfo.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestimeunitkind.h"

namespace Zorvane::metamodel::types {

class TimeTypeInfo;

/// A duration: a number and a unit.
class VELUM_TYPES_EXPORT Time : public Quantity<Time, QOB::Real, TimeUnitKind> {
public:
    using Quantity::Quantity;

    static std::string getTypeName();
    /// The run-time description of this class; one per process.
    static Tessel::TypeInfo const& getTypeInfo();

private:
    friend Quantity;
    friend QuantityTypeInfo<TimeTypeInfo, Time>;

    [[noreturn]] static void fail(char const* text);
};

/// The run-time description of Time.
class VELUM_TYPES_EXPORT TimeTypeInfo : public QuantityTypeInfo<TimeTypeInfo, Time> {};

VELUM_TYPES_EXPORT inline unsigned hash_value(Time const& time) noexcept {
    return time.hash();
}

extern template class Quantity<Time, QOB::Real, TimeUnitKind>;
extern template class QuantityTypeInfo<TimeTypeInfo, Time>;

} // namespace Zorvane::metamodel::types

template <>
struct std::hash<Zorvane::metamodel::types::Time>
    : Zorvane::metamodel::ValueHash<Zorvane::metamodel::types::Time> {};
