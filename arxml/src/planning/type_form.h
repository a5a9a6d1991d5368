#pragma once

#include "planning/import_context.h"

namespace velum::arxml {

/// How an IMPLEMENTATION-DATA-TYPE, or an element of one, is built.
enum class TypeForm { value, reference, array, structure, pointer, other };

/// What SW-DATA-DEF-PROPS says, of the first variant.
Element propertiesOf(Element type);

/// Goes by the category, but where it is missing, or contradicted by what is referred to, by the
/// content.
TypeForm formOf(Element type);

/// The word for a form in reports.
char const* categoryOf(TypeForm form);

} // namespace velum::arxml
