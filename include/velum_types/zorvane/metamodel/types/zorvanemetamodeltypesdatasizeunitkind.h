#pragma once

#include "velum_foundation/zorvane/metamodel/kind.h"
#include "velum_types/export.h"

namespace Zorvane::metamodel::types {

struct VELUM_TYPES_EXPORT DataSizeUnitKindLiterals {
    enum Value : int { bit, byte, KB, MB, GB };
    static constexpr std::array<std::string_view, 5> texts{"bit", "byte", "KB", "MB", "GB"};
    static constexpr char const* typeName = "Zorvane.metamodel.types.DataSizeUnitKind";

protected:
    [[noreturn]] static void fail(char const* text);
};

/// The unit of a DataSize.
class VELUM_TYPES_EXPORT DataSizeUnitKind
    : public Kind<DataSizeUnitKind, DataSizeUnitKindLiterals> {
public:
    using Kind::Kind;
};

VELUM_TYPES_EXPORT constexpr unsigned hash_value(DataSizeUnitKind const& unit) noexcept {
    return unit.hash();
}

} // namespace Zorvane::metamodel::types

extern template class Zorvane::metamodel::Kind<Zorvane::metamodel::types::DataSizeUnitKind,
                                               Zorvane::metamodel::types::DataSizeUnitKindLiterals>;

template <>
struct std::hash<Zorvane::metamodel::types::DataSizeUnitKind>
    : Zorvane::metamodel::ValueHash<Zorvane::metamodel::types::DataSizeUnitKind> {};
