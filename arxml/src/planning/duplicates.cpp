#include "planning/duplicates.h"

#include <algorithm>
#include <array>
#include <vector>
#include <velum_arxml/notation/number.h>

namespace velum::arxml {

namespace {

/// Elements that no object has a place for, wherever they stand.
constexpr std::array<std::string_view, 11> notHeld = {"ADMIN-DATA",
                                                      "ANNOTATIONS",
                                                      "DESC",
                                                      "INTRODUCTION",
                                                      "LONG-NAME",
                                                      "SW-ADDR-METHOD-REF",
                                                      "SW-ALIGNMENT",
                                                      "SW-CALIBRATION-ACCESS",
                                                      "SW-INTENDED-RESOLUTION",
                                                      "SW-REFRESH-TIMING",
                                                      "VARIATION-POINT"};

/// A text of a message; long ones are of no use there.
std::string shortened(std::string_view text) {
    constexpr std::size_t most = 60;
    return text.size() <= most ? bracketed(text)
                               : bracketed(std::string(text.substr(0, most)) + "...");
}

bool areEqualNumbers(std::string_view a, std::string_view b) {
    const RealNumber left = readRealNumber(a);
    const RealNumber right = readRealNumber(b);
    return left.value && right.value && *left.value == *right.value && !left.isRounded &&
           !right.isRounded;
}

/// Looks for the first difference of two trees.
class Comparison {
public:
    Comparison(ImportContext const& context, bool onlyHeld)
        : context_(context), onlyHeld_(onlyHeld) {}

    std::optional<std::string> compare(Element a, Element b) const {
        if (a.name() != b.name()) {
            return nameOf(a) + " stands there and " + nameOf(b) + " here";
        }
        if (a.text() != b.text() && !(onlyHeld_ && areEqualNumbers(a.text(), b.text()))) {
            return nameOf(a) + " is " + shortened(a.text()) + " there and " + shortened(b.text()) +
                   " here";
        }
        for (std::string_view const attribute : {"DEST", "BASE", "INTERVAL-TYPE"}) {
            if (auto difference = compareAttribute(a, b, attribute)) {
                return difference;
            }
        }
        return compareChildren(a, b);
    }

private:
    std::string nameOf(Element element) const { return std::string(context_.kind(element)); }

    std::optional<std::string>
    compareAttribute(Element a, Element b, std::string_view attribute) const {
        const std::string_view missing =
            onlyHeld_ && attribute == "INTERVAL-TYPE" ? "CLOSED" : std::string_view();
        const std::string_view left = a.attribute(attribute).value_or(missing);
        const std::string_view right = b.attribute(attribute).value_or(missing);
        if (left == right) {
            return std::nullopt;
        }
        return std::string(attribute) + " of " + nameOf(a) + " is " + shortened(left) +
               " there and " + shortened(right) + " here";
    }

    std::vector<Element> childrenOf(Element element) const {
        std::vector<Element> children;
        for (const Element child : element.children()) {
            if (!onlyHeld_ ||
                std::find(notHeld.begin(), notHeld.end(), context_.kind(child)) == notHeld.end()) {
                children.push_back(child);
            }
        }
        return children;
    }

    std::optional<std::string> compareChildren(Element a, Element b) const {
        const std::vector<Element> left = childrenOf(a);
        const std::vector<Element> right = childrenOf(b);
        for (std::size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
            if (left[i].name() != right[i].name()) {
                const bool isMore = left.size() > right.size();
                return nameOf(isMore ? left[i] : right[i]) + " of " + nameOf(a) +
                       (isMore ? " stands only there" : " stands only here");
            }
            if (auto difference = compare(left[i], right[i])) {
                return difference;
            }
        }
        if (left.size() == right.size()) {
            return std::nullopt;
        }
        const bool isMore = left.size() > right.size();
        return nameOf(isMore ? left[right.size()] : right[left.size()]) + " of " + nameOf(a) +
               (isMore ? " stands only there" : " stands only here");
    }

    ImportContext const& context_;
    bool onlyHeld_;
};

} // namespace

std::optional<Difference>
differenceOf(ImportContext const& context, Element first, Element second) {
    if (haveEqualContent(context.documents.store, first, second)) {
        return std::nullopt;
    }
    if (auto held = Comparison(context, true).compare(first, second)) {
        return Difference{std::move(*held), true};
    }
    const auto any = Comparison(context, false).compare(first, second);
    return Difference{any.value_or("its writing"), false};
}

} // namespace velum::arxml
