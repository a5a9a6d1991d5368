#pragma once

#include <cstdint>
#include <string_view>

namespace velum::arxml {

/// Why an element, or what it stands for, is not in the model as the file has it.
enum class Reason : std::uint8_t {
    noClass,        ///< No object is made of this element.
    noProperty,     ///< The object exists; it has no place for this detail.
    dangling,       ///< The target of the reference is not in the files.
    wrongTarget,    ///< The target is not of the kind that is needed.
    noName,         ///< An element that needs a SHORT-NAME has none.
    longName,       ///< A name is longer than the format allows; it is held as it is.
    longPath,       ///< A path is longer than any that objects are known by.
    duplicatePath,  ///< An element of the same kind has the same path; the first one counts.
    badNumber,      ///< The text is no number.
    outOfRange,     ///< The number is one that the model can't hold.
    inferred,       ///< A value was missing or unusual and follows from another one.
    duplicateValue, ///< The model's list refuses a value that it holds already.
    notInvertible,  ///< The coefficients can't be turned into the direction that the model holds.
    symbolic,       ///< System constants stand in the place of a number.
    contradiction,  ///< Two places of the files say different things of one object.
};

/// How many there are.
inline constexpr unsigned countOfReasons = static_cast<unsigned>(Reason::contradiction) + 1;

/// The word for it in reports.
constexpr std::string_view code(Reason reason) {
    switch (reason) {
    case Reason::noClass:
        return "no-class";
    case Reason::noProperty:
        return "no-property";
    case Reason::dangling:
        return "dangling";
    case Reason::wrongTarget:
        return "wrong-dest";
    case Reason::noName:
        return "no-name";
    case Reason::longName:
        return "long-name";
    case Reason::longPath:
        return "long-path";
    case Reason::duplicatePath:
        return "duplicate-path";
    case Reason::badNumber:
        return "bad-number";
    case Reason::outOfRange:
        return "out-of-range";
    case Reason::inferred:
        return "inferred";
    case Reason::duplicateValue:
        return "duplicate-value";
    case Reason::notInvertible:
        return "not-invertible";
    case Reason::symbolic:
        return "symbolic";
    case Reason::contradiction:
        return "contradiction";
    }
    return "";
}

/// Whether an object is wrong or incomplete by a fault of the input, as opposed to what the model
/// has no place for.
constexpr bool isFault(Reason reason) {
    switch (reason) {
    case Reason::dangling:
    case Reason::wrongTarget:
    case Reason::noName:
    case Reason::longPath:
    case Reason::duplicatePath:
    case Reason::badNumber:
    case Reason::outOfRange:
    case Reason::contradiction:
        return true;
    default:
        return false;
    }
}

} // namespace velum::arxml
