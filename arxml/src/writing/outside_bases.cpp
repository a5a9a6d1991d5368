#include "writing/outside_bases.h"

#include <algorithm>

namespace velum::arxml {

namespace {

/// "/A/B" has the label "A_B".
std::string plainLabel(std::string_view package) {
    std::string label(package.substr(1));
    for (char& c : label) {
        c = isIdentifier(std::string("a") + c) ? c : '_';
    }
    return label;
}

} // namespace

std::string const& OutsideBases::labelFor(Outline::Entry const& target) {
    const auto known = labels_.find(target.package());
    if (known != labels_.end()) {
        return known->second;
    }
    const auto isTaken = [this](std::string const& label) {
        return std::any_of(labels_.begin(), labels_.end(), [&label](auto const& each) {
            return each.second == label;
        });
    };
    const std::string plain = plainLabel(target.package());
    std::string label = plain;
    for (int number = 2; isTaken(label); ++number) {
        label = plain + "_" + std::to_string(number);
    }
    return labels_.emplace(target.package(), label).first->second;
}

void OutsideBases::write(XmlWriter& xml) const {
    const OpenElement bases(xml, "REFERENCE-BASES", OpenElement::When::ifUsed);
    for (auto const& [package, label] : labels_) {
        const OpenElement base(xml, "REFERENCE-BASE");
        xml.leaf("SHORT-LABEL", label);
        xml.leaf("IS-DEFAULT", "false");
        xml.leaf("IS-GLOBAL", "false");
        xml.leaf("BASE-IS-THIS-PACKAGE", "false");
        xml.leaf("PACKAGE-REF", "DEST", "AR-PACKAGE", package);
    }
}

} // namespace velum::arxml
