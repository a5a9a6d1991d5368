#pragma once

#include "qob/qob/export.h"
#include "qob/qob/string.h"

#include <climits>

#include <compare>
#include <functional>
#include <iosfwd>
#include <string>

namespace QOB {

/// A signed 32-bit integer, or the invalid value. It takes no more room than an int: the most
/// negative number stands for the invalid value, so constructing from that number gives the invalid
/// value.
class QOB_EXPORT Integer {
public:
    constexpr Integer() noexcept = default;
    constexpr Integer(int value) noexcept : value_(value) {}

    /// Unboxing. Raises QOB::Exception for a null handle and Tessel::bad_any_cast for another type.
    explicit Integer(Object const& object);
    explicit Integer(ImmutableObject const& object);
    explicit Integer(ValueObject const& object);
    explicit Integer(ImmutableValueObject const& object);
    /// Boxes a copy.
    operator Object() const;

    constexpr bool isValid() const noexcept { return value_ != Invalid; }
    /// The stored number; of an invalid value its reserved pattern.
    constexpr operator int const&() const noexcept { return value_; }

    constexpr bool operator==(int const& other) const noexcept { return value_ == other; }
    constexpr auto operator<=>(int const& other) const noexcept { return value_ <=> other; }
    /// Two invalid values are equal; an invalid one stands before every valid one.
    friend constexpr bool operator==(Integer const&, Integer const&) noexcept = default;
    friend constexpr auto operator<=>(Integer const&, Integer const&) noexcept = default;

    /// The decimal digits; the empty text for the invalid value.
    String toString() const;
    /// Reads what toString writes: an empty text is the invalid value. Raises QOB::Exception, which
    /// quotes the text, for anything that is not wholly a 32-bit number.
    static Integer fromString(String const& text);
    static std::string getTypeName();

private:
    static constexpr int Invalid = INT_MIN;

    int value_ = Invalid;
};

QOB_EXPORT std::ostream& operator<<(std::ostream& out, Integer const& value);

constexpr unsigned hash_value(Integer const& value) noexcept {
    return static_cast<unsigned>(static_cast<int const&>(value));
}

} // namespace QOB

template <>
struct std::hash<QOB::Integer> {
    std::size_t operator()(QOB::Integer const& value) const noexcept {
        return std::hash<int>()(static_cast<int const&>(value));
    }
};
