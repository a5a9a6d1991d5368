#pragma once

#include "velum_foundation/export.h"
#include "velum_foundation/zorvane/metamodel/kind.h"

namespace Zorvane::metamodel::foundation {

struct VELUM_FOUNDATION_EXPORT VisibilityKindLiterals {
    // The literals are words of the language.
    enum Value : int {
        PublicVisibility,
        PrivateVisibility,
        ProtectedVisibility,
        PackageVisibility
    };
    static constexpr std::array<std::string_view, 4> texts{"public",
                                                           "private",
                                                           "protected",
                                                           "package"};
    static constexpr char const* typeName = "Zorvane.metamodel.foundation.VisibilityKind";

protected:
    [[noreturn]] static void fail(char const* text);
};

/// From where a named element can be seen.
class VELUM_FOUNDATION_EXPORT VisibilityKind : public Kind<VisibilityKind, VisibilityKindLiterals> {
public:
    using Kind::Kind;
};

VELUM_FOUNDATION_EXPORT constexpr unsigned hash_value(VisibilityKind const& visibility) noexcept {
    return visibility.hash();
}

} // namespace Zorvane::metamodel::foundation

extern template class Zorvane::metamodel::Kind<
    Zorvane::metamodel::foundation::VisibilityKind,
    Zorvane::metamodel::foundation::VisibilityKindLiterals>;

template <>
struct std::hash<Zorvane::metamodel::foundation::VisibilityKind>
    : Zorvane::metamodel::ValueHash<Zorvane::metamodel::foundation::VisibilityKind> {};
