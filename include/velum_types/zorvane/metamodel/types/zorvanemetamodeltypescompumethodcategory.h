#pragma once

#include "velum_types/zorvane/metamodel/types/kind.h"

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

extern template class Kind<CompuMethodCategory, CompuMethodCategoryLiterals>;

} // namespace Zorvane::metamodel::types

template <>
struct std::hash<Zorvane::metamodel::types::CompuMethodCategory>
    : Zorvane::metamodel::types::ValueHash<Zorvane::metamodel::types::CompuMethodCategory> {};
