#pragma once

#include "qob/qob/exception.h"

#include <string>

namespace VelumTest {

/// The text of the QOB::Exception that `action` raises; empty if it raises none.
template <class Action>
std::string failureOf(Action const& action) {
    try {
        action();
    } catch (QOB::Exception const& failure) {
        return failure.what();
    }
    return {};
}

/// What messageOf() answers to an action that raises nothing.
inline constexpr char const* NoFailure = "no failed check: ";

/// The message part of a failed check: what stands between "Assertion failed: " and the place.
template <class Action>
std::string messageOf(Action const& action) {
    std::string text = failureOf(action);
    std::string const prefix = "Assertion failed: ";
    if (text.rfind(prefix, 0) != 0) {
        return NoFailure + text;
    }
    text.erase(0, prefix.size());
    return text.substr(0, text.rfind(" at "));
}

} // namespace VelumTest
