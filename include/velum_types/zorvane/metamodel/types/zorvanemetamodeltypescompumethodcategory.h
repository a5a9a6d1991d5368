#pragma once

#include "velum_foundation/zorvane/metamodel/kind.h"
#include "velum_types/export.h"

namespace Zorvane::metamodel::types {

struct VELUM_TYPES_EXPORT CompuMethodCategoryLiterals {
    enum Value : int { Identical, Linear, RatFunc, TextTable, LinearAndTextTable };
    static constexpr std::array<std::string_view, 5> texts{"Identical",
                                                           "Linear",
                                                           "RatFunc",
                                                           "TextTable",
                                                           "LinearAndTextTable"};
    static constexpr char const* typeName = "Zorvane.metamodel.types.CompuMethodCategory";

protected:
    [[noreturn]] static void fail(char const* text);
};

/// How a computation method computes.
class VELUM_TYPES_EXPORT CompuMethodCategory
    : public Kind<CompuMethodCategory, CompuMethodCategoryLiterals> {
public:
    using Kind::Kind;
};

VELUM_TYPES_EXPORT constexpr unsigned hash_value(CompuMethodCategory const& category) noexcept {
    return category.hash();
}

} // namespace Zorvane::metamodel::types

extern template class Zorvane::metamodel::Kind<
    Zorvane::metamodel::types::CompuMethodCategory,
    Zorvane::metamodel::types::CompuMethodCategoryLiterals>;

template <>
struct std::hash<Zorvane::metamodel::types::CompuMethodCategory>
    : Zorvane::metamodel::ValueHash<Zorvane::metamodel::types::CompuMethodCategory> {};
