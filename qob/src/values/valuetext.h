#pragma once

#include "qob/qob/boolean.h"
#include "qob/qob/integer.h"
#include "qob/qob/real.h"

#include <string>
#include <string_view>

namespace QOB {
class ImmutableDataType;
} // namespace QOB

namespace QOB::internal {

/// Ties one of the kernel's own value types to the live element that describes it.
void describeOwnType(char const* dottedName, ImmutableDataType const& element);

/// Reads a whole text as a value; the empty text is the invalid value. False, and `value` as it
/// was, if the text is none.
bool readText(std::string_view text, Integer& value);
bool readText(std::string_view text, Real& value);
bool readText(std::string_view text, Boolean& value);

/// What a text should have been, for the sentence that refuses it.
char const* expectedText(Integer const&);
char const* expectedText(Real const&);
char const* expectedText(Boolean const&);

/// The sentence that refuses a text.
template <class Value>
std::string refusal(std::string_view text) {
    return "The text \"" + std::string(text) + "\" is not " + expectedText(Value()) + ".";
}

} // namespace QOB::internal
