#pragma once

#include "qob/qob/exception.h"
#include "qob/qob/string.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

/// A text is either refused by a QOB::Exception or it is a value: then its own text reads back to
/// the same value, and the way through wide text gives it too.
template <class Value>
void readAnyText(std::uint8_t const* data, std::size_t size) {
    QOB::String const text(std::string(reinterpret_cast<char const*>(data), size));
    Value value;
    try {
        value = Value::fromString(text);
    } catch (QOB::Exception const&) {
        return;
    }
    QOB::String const written = value.toString();
    // By text, not by value: a number may be "nan", which equals nothing.
    if (Value::fromString(written).toString() != written ||
        Value::fromUString(text).toString() != written ||
        QOB::String(value.toUString()) != written) {
        std::abort();
    }
}
