#pragma once

#include "reading/element_store.h"

#include <string>

namespace velum::arxml {

/// The name of a unit as a person reads it: "m/s²" of m/s<SUP>2</SUP>.
std::string displayNameOf(Element displayName);

} // namespace velum::arxml
