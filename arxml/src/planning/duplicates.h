#pragma once

#include "planning/import_context.h"

#include <optional>
#include <string>

namespace velum::arxml {

/// How the second of two elements of one path differs from the first.
struct Difference {
    std::string text;   ///< "BASE-TYPE-SIZE is (16) there and (8) here"
    bool isHeld = true; ///< Whether the model has a place for what differs.
};

/// What differs, of what the model holds if anything of that does; none if both say the same.
/// Names that only identify the state of a file (UUID) don't count.
std::optional<Difference> differenceOf(ImportContext const& context, Element first, Element second);

} // namespace velum::arxml
