#pragma once

#include "arxml/fragment.h"
#include "dictionary/kind_importer.h"

#include <cstddef>
#include <optional>
#include <unordered_map>

namespace velum::dictionary {

inline report::Place placeOf(const arxml::Fragment& fragment, arxml::Fragment::Index element) {
    return {fragment.position(element), fragment.path(element)};
}

/// Why no object can be made of a fragment whatever it holds: it has no name, or its path is among
/// those that were `taken` before. Reported as a finding.
std::optional<report::Reason>
reasonAgainst(const arxml::Fragment& fragment,
              const ImportContext& context,
              const std::unordered_map<arxml::PathId, std::size_t>& taken);

} // namespace velum::dictionary
