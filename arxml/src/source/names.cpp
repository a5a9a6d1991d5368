#include "source/names.h"

#include <array>

namespace velum::arxml {

namespace {

constexpr std::array<std::string_view, element::countOfKnown> knownNames = {
#define VELUM_KNOWN_NAME(identifier, text) text,
#include "source/known_names.inc"
#undef VELUM_KNOWN_NAME
};

} // namespace

Names::Names() {
    for (const std::string_view name : knownNames) {
        intern(name);
    }
}

NameId Names::intern(std::string_view name) {
    if (const auto found = ids_.find(name); found != ids_.end()) {
        return found->second;
    }
    const auto id = static_cast<NameId>(texts_.size());
    std::string const& kept = texts_.emplace_back(name);
    ids_.emplace(kept, id);
    isReference_.push_back(name.ends_with("-REF") || name.ends_with("-TREF"));
    return id;
}

std::optional<NameId> Names::find(std::string_view name) const {
    const auto found = ids_.find(name);
    return found == ids_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace velum::arxml
