#pragma once

#include "velum_types/zorvane/metamodel/types/kind.h"

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

extern template class Kind<DataSizeUnitKind, DataSizeUnitKindLiterals>;

} // namespace Zorvane::metamodel::types

template <>
struct std::hash<Zorvane::metamodel::types::DataSizeUnitKind>
    : Zorvane::metamodel::types::ValueHash<Zorvane::metamodel::types::DataSizeUnitKind> {};
