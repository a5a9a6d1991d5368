#pragma once

#include "planning/catalogue.h"
#include "planning/import_context.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <velum_arxml/notation/encoding.h>

namespace velum::arxml {

/// What one SW-BASE-TYPE says about the values of the types that refer to it.
struct BaseType {
    Element element;
    Encoding encoding;
    std::optional<std::int32_t> bits; ///< none if the file gives no size
    Element size;                     ///< where it gives it

    /// Whether the values are integers, characters included.
    bool isInteger() const { return encoding.values == Encoding::Values::integer; }
};

/// Reads the base types. The model has no place for size and encoding but in the types that refer
/// to a base type, so they are kept here until the types are made.
class BaseTypes {
public:
    BaseTypes(ImportContext const& context, Catalogue const& catalogue);

    BaseType const& at(Element element) const { return byElement_.at(element.index()); }

private:
    static BaseType read(ImportContext const& context, Element element);

    std::unordered_map<ElementStore::Index, BaseType> byElement_;
};

/// Consumes what a type takes over from its base type.
void consumeBaseType(ImportContext const& context, BaseType const& baseType);

} // namespace velum::arxml
