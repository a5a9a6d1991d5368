#include "writing/outline.h"

#include <algorithm>

namespace velum::arxml {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

bool isIdentifier(std::string_view name) {
    constexpr std::size_t mostCharacters = 128;
    return !name.empty() && name.size() <= mostCharacters && isLetter(name.front()) &&
           std::all_of(name.begin(), name.end(), [](char c) {
               return isLetter(c) || (c >= '0' && c <= '9') || c == '_';
           });
}

std::string nameInPath(std::string_view name) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = name.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    std::string text(name.substr(first, name.find_last_not_of(blanks) - first + 1));
    for (char& c : text) {
        if (c == '/' || (c >= 0 && c < 0x20)) {
            c = '_';
        }
    }
    return text;
}

std::string_view tagOf(ElementKind kind) {
    switch (kind) {
    case ElementKind::baseType:
        return "SW-BASE-TYPE";
    case ElementKind::unit:
        return "UNIT";
    case ElementKind::dimension:
        return "PHYSICAL-DIMENSION";
    case ElementKind::method:
        return "COMPU-METHOD";
    case ElementKind::constraint:
        return "DATA-CONSTR";
    case ElementKind::layout:
        return "SW-RECORD-LAYOUT";
    case ElementKind::constant:
        return "CONSTANT-SPECIFICATION";
    case ElementKind::implementationType:
        return "IMPLEMENTATION-DATA-TYPE";
    case ElementKind::applicationPrimitive:
        return "APPLICATION-PRIMITIVE-DATA-TYPE";
    case ElementKind::applicationArray:
        return "APPLICATION-ARRAY-DATA-TYPE";
    case ElementKind::applicationRecord:
        return "APPLICATION-RECORD-DATA-TYPE";
    case ElementKind::none:
        break;
    }
    return "";
}

std::string nameOf(QOB::ClassObject const& object) {
    const foundation::NamedElement named(object);
    return named.isValid() && named.hasName() ? std::string(named.getName()) : std::string();
}

std::string externalIdOf(QOB::ClassObject const& object) {
    return object.hasExternalId() ? std::string(object.getExternalId()) : std::string();
}

std::vector<SiDimension> const& siDimensions() {
    static const std::vector<SiDimension> table = {
        {"LENGTH-EXP", "Length", "L"},
        {"MASS-EXP", "Mass", "M"},
        {"TIME-EXP", "Time", "T"},
        {"CURRENT-EXP", "Current", "I"},
        {"TEMPERATURE-EXP", "Temperature", "Theta"},
        {"MOLAR-AMOUNT-EXP", "MolarAmount", "N"},
        {"LUMINOUS-INTENSITY-EXP", "LuminousIntensity", "J"},
    };
    return table;
}

int siDimensionOf(types::Dimension const& dimension) {
    if (dimension.hasExternalId() || !dimension.hasSymbol()) {
        return -1;
    }
    const std::string name = nameOf(dimension);
    for (std::size_t i = 0; i < siDimensions().size(); ++i) {
        if (siDimensions()[i].name == name &&
            siDimensions()[i].symbol == dimension.getSymbol().view()) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

bool isPathBefore(std::string_view a, std::string_view b) {
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (x == a.end() || y == b.end()) {
        return y != b.end();
    }
    const auto rank = [](char c) {
        return c == '/' ? 0 : static_cast<int>(static_cast<unsigned char>(c)) + 1;
    };
    return rank(*x) < rank(*y);
}

} // namespace velum::arxml
