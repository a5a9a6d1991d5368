#pragma once

#include "velum_foundation/zorvane/metamodel/kind.h"
#include "velum_types/export.h"

namespace Zorvane::metamodel::types {

struct VELUM_TYPES_EXPORT TimeUnitKindLiterals {
    enum Value : int { s, ms, us, min, hrs, dys, wks, mos, yrs };
    static constexpr std::array<std::string_view, 9>
        texts{"s", "ms", "us", "min", "hrs", "dys", "wks", "mos", "yrs"};
    static constexpr char const* typeName = "Zorvane.metamodel.types.TimeUnitKind";

protected:
    [[noreturn]] static void fail(char const* text);
};

/// The unit of a Time.
class VELUM_TYPES_EXPORT TimeUnitKind : public Kind<TimeUnitKind, TimeUnitKindLiterals> {
public:
    using Kind::Kind;
};

VELUM_TYPES_EXPORT constexpr unsigned hash_value(TimeUnitKind const& unit) noexcept {
    return unit.hash();
}

} // namespace Zorvane::metamodel::types

extern template class Zorvane::metamodel::Kind<Zorvane::metamodel::types::TimeUnitKind,
                                               Zorvane::metamodel::types::TimeUnitKindLiterals>;

template <>
struct std::hash<Zorvane::metamodel::types::TimeUnitKind>
    : Zorvane::metamodel::ValueHash<Zorvane::metamodel::types::TimeUnitKind> {};
