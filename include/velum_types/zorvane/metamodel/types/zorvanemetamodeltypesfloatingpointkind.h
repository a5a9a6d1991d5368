#pragma once

#include "velum_types/zorvane/metamodel/types/kind.h"

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

extern template class Kind<FloatingPointKind, FloatingPointKindLiterals>;

} // namespace Zorvane::metamodel::types

template <>
struct std::hash<Zorvane::metamodel::types::FloatingPointKind>
    : Zorvane::metamodel::types::ValueHash<Zorvane::metamodel::types::FloatingPointKind> {};
