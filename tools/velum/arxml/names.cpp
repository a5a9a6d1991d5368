#include "arxml/names.h"

#include <array>

namespace velum::arxml {

namespace {

constexpr std::array<std::string_view, element::countOfKnown> knownNames = {
    "AR-PACKAGE",
    "AR-PACKAGES",
    "AUTOSAR",
    "BASE-IS-THIS-PACKAGE",
    "BASE-TYPE-ENCODING",
    "BASE-TYPE-REF",
    "BASE-TYPE-SIZE",
    "CATEGORY",
    "ELEMENTS",
    "IMPLEMENTATION-DATA-TYPE",
    "IMPLEMENTATION-DATA-TYPE-REF",
    "IS-DEFAULT",
    "IS-GLOBAL",
    "NATIVE-DECLARATION",
    "PACKAGE-REF",
    "REFERENCE-BASE",
    "REFERENCE-BASES",
    "SHORT-LABEL",
    "SHORT-NAME",
    "SUB-ELEMENTS",
    "SW-BASE-TYPE",
    "SW-DATA-DEF-PROPS",
    "SW-DATA-DEF-PROPS-CONDITIONAL",
    "SW-DATA-DEF-PROPS-VARIANTS",
};
static_assert(!knownNames.back().empty(), "every known element has its name");

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
    const std::string& kept = texts_.emplace_back(name);
    ids_.emplace(kept, id);
    return id;
}

} // namespace velum::arxml
