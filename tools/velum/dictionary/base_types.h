#pragma once

#include "dictionary/catalogue.h"
#include "dictionary/encoding.h"
#include "dictionary/import_context.h"

#include <cstdint>
#include <optional>
#include <unordered_map>

namespace velum::dictionary {

/// What one SW-BASE-TYPE says about the values of the types that refer to it.
struct BaseType {
    arxml::Element element;
    Encoding encoding;
    std::optional<std::int32_t> bits; ///< none if the file gives no size
    arxml::Element size;              ///< where it gives it

    /// Whether the values are integers, characters included.
    bool isInteger() const { return encoding.values == Encoding::Values::integer; }
};

/// Reads the base types. The model has no place for size and encoding but in the types that refer
/// to a base type, so they are kept here until the types are made.
class BaseTypes {
public:
    BaseTypes(const ImportContext& context, const Catalogue& catalogue);

    const BaseType& at(arxml::Element element) const { return byElement_.at(element.index()); }

private:
    static BaseType read(const ImportContext& context, arxml::Element element);

    std::unordered_map<arxml::ElementStore::Index, BaseType> byElement_;
};

/// Consumes what a type takes over from its base type.
void consumeBaseType(const ImportContext& context, const BaseType& baseType);

} // namespace velum::dictionary
