#pragma once

#include "velum_foundation/zorvane/metamodel/kind.h"
#include "velum_types/export.h"

namespace Zorvane::metamodel::types {

struct VELUM_TYPES_EXPORT FloatingPointKindLiterals {
    enum Value : int { IEEE_Double, IEEE_Single };
    static constexpr std::array<std::string_view, 2> texts{"IEEE_Double", "IEEE_Single"};
    static constexpr char const* typeName = "Zorvane.metamodel.types.FloatingPointKind";

protected:
    [[noreturn]] static void fail(char const* text);
};

/// The format of a floating-point type.
class VELUM_TYPES_EXPORT FloatingPointKind
    : public Kind<FloatingPointKind, FloatingPointKindLiterals> {
public:
    using Kind::Kind;
};

VELUM_TYPES_EXPORT constexpr unsigned hash_value(FloatingPointKind const& kind) noexcept {
    return kind.hash();
}

} // namespace Zorvane::metamodel::types

extern template class Zorvane::metamodel::Kind<
    Zorvane::metamodel::types::FloatingPointKind,
    Zorvane::metamodel::types::FloatingPointKindLiterals>;

template <>
struct std::hash<Zorvane::metamodel::types::FloatingPointKind>
    : Zorvane::metamodel::ValueHash<Zorvane::metamodel::types::FloatingPointKind> {};
