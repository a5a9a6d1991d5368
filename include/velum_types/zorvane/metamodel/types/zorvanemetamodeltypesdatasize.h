#pragma once

#include "qob/qob/integer.h"
#include "velum_types/zorvane/metamodel/types/quantity.h"
#include "velum_types/zorvane/metamodel/types/quantitytypeinfo.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasizeunitkind.h"

namespace Zorvane::metamodel::types {

class DataSizeTypeInfo;

/// A size in memory: a whole number of a unit.
class VELUM_TYPES_EXPORT DataSize : public Quantity<DataSize, QOB::Integer, DataSizeUnitKind> {
public:
    using Quantity::Quantity;

    static std::string getTypeName();
    /// The run-time description of this class; one per process.
    static Tessel::TypeInfo const& getTypeInfo();

private:
    friend Quantity;
    friend QuantityTypeInfo<DataSizeTypeInfo, DataSize>;

    [[noreturn]] static void fail(char const* text);
};

/// The run-time description of DataSize.
class VELUM_TYPES_EXPORT DataSizeTypeInfo : public QuantityTypeInfo<DataSizeTypeInfo, DataSize> {};

VELUM_TYPES_EXPORT constexpr unsigned hash_value(DataSize const& size) noexcept {
    return size.hash();
}

extern template class Quantity<DataSize, QOB::Integer, DataSizeUnitKind>;
extern template class QuantityTypeInfo<DataSizeTypeInfo, DataSize>;

} // namespace Zorvane::metamodel::types

template <>
struct std::hash<Zorvane::metamodel::types::DataSize>
    : Zorvane::metamodel::ValueHash<Zorvane::metamodel::types::DataSize> {};
