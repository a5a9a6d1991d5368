#pragma once

#include "velum_types/zorvane/metamodel/types/kind.h"

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

extern template class Kind<TimeUnitKind, TimeUnitKindLiterals>;

} // namespace Zorvane::metamodel::types

template <>
struct std::hash<Zorvane::metamodel::types::TimeUnitKind>
    : Zorvane::metamodel::types::ValueHash<Zorvane::metamodel::types::TimeUnitKind> {};
