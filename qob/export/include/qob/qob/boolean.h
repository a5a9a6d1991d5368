#pragma once

#include "qob/qob/export.h"
#include "qob/qob/string.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace QOB {

/// A truth value, or the invalid value.
class QOB_EXPORT Boolean {
public:
    constexpr Boolean() noexcept = default;
    constexpr Boolean(bool value) noexcept : value_(value), valid_(true) {}
    /// A pointer must not convert to a truth value by way of bool.
    Boolean(void const*) = delete;

    /// Unboxing. Raises QOB::Exception for a null handle and Tessel::bad_any_cast for another type.
    explicit Boolean(Object const& object);
    explicit Boolean(ImmutableObject const& object);
    explicit Boolean(ValueObject const& object);
    explicit Boolean(ImmutableValueObject const& object);
    /// Boxes a copy.
    operator Object() const;

    constexpr bool isValid() const noexcept { return valid_; }
    /// A reference into this object; false for the invalid value.
    constexpr operator bool const&() const noexcept { return value_; }

    constexpr bool operator==(bool const& other) const noexcept {
        return valid_ && value_ == other;
    }
    friend constexpr bool operator==(Boolean const&, Boolean const&) noexcept = default;

    /// "true", "false", or the empty text for the invalid value.
    String toString() const;
    /// Reads what toString writes; raises QOB::Exception, which quotes the text, for other texts.
    static Boolean fromString(String const& text);
    static std::string getTypeName();

private:
    bool value_ = false;
    bool valid_ = false;
};

QOB_EXPORT std::ostream& operator<<(std::ostream& out, Boolean const& value);

constexpr unsigned hash_value(Boolean const& value) noexcept {
    return value.isValid() ? 1U + static_cast<unsigned>(static_cast<bool const&>(value)) : 0U;
}

} // namespace QOB

template <>
struct std::hash<QOB::Boolean> {
    std::size_t operator()(QOB::Boolean const& value) const noexcept { return hash_value(value); }
};
