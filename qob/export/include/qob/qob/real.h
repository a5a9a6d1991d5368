#pragma once

#include "qob/qob/export.h"
#include "qob/qob/string.h"

#include <bit>
#include <compare>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

namespace QOB {

/// An IEEE double, or the invalid value. One NaN with a pattern of its own stands for the invalid
/// value; every other NaN is a number like any other.
class QOB_EXPORT Real {
public:
    constexpr Real() noexcept = default;
    constexpr Real(double value) noexcept : value_(value) {}

    /// Unboxing. Raises QOB::Exception for a null handle and Tessel::bad_any_cast for another type.
    explicit Real(Object const& object);
    explicit Real(ImmutableObject const& object);
    explicit Real(ValueObject const& object);
    explicit Real(ImmutableValueObject const& object);
    /// Boxes a copy.
    operator Object() const;

    constexpr bool isValid() const noexcept { return !isInvalidPattern(value_); }
    /// The stored number; of an invalid value its reserved NaN.
    constexpr operator double const&() const noexcept { return value_; }

    /// Numbers compare as the language's doubles do. Two invalid values are equal; an invalid one
    /// stands before every valid one.
    constexpr bool operator==(double const& other) const noexcept { return equal(value_, other); }
    constexpr std::partial_ordering operator<=>(double const& other) const noexcept {
        return order(value_, other);
    }
    friend constexpr bool operator==(Real const& a, Real const& b) noexcept {
        return equal(a.value_, b.value_);
    }
    friend constexpr std::partial_ordering operator<=>(Real const& a, Real const& b) noexcept {
        return order(a.value_, b.value_);
    }

    /// The shortest text that reads back to the same double, whatever the locale; "inf", "-inf",
    /// "nan"; the empty text for the invalid value.
    String toString() const;
    /// Reads what toString writes: an empty text is the invalid value. Raises QOB::Exception, which
    /// quotes the text, for anything that is not wholly a number in the range of a double.
    static Real fromString(String const& text);
    static std::string getTypeName();

private:
    static constexpr std::uint64_t InvalidPattern = 0x7ff8'51ab'90c3'd2e7;

    static constexpr bool isInvalidPattern(double value) noexcept {
        return std::bit_cast<std::uint64_t>(value) == InvalidPattern;
    }
    static constexpr bool equal(double a, double b) noexcept {
        return a == b || (isInvalidPattern(a) && isInvalidPattern(b));
    }
    static constexpr std::partial_ordering order(double a, double b) noexcept {
        bool const hasA = !isInvalidPattern(a);
        bool const hasB = !isInvalidPattern(b);
        return hasA && hasB ? a <=> b : std::partial_ordering(hasA <=> hasB);
    }

    double value_ = std::bit_cast<double>(InvalidPattern);
};

QOB_EXPORT std::ostream& operator<<(std::ostream& out, Real const& value);
/// Equal values hash equally: both zeros are one, and so are all NaNs that are numbers.
QOB_EXPORT unsigned hash_value(Real const& value) noexcept;

} // namespace QOB

template <>
struct std::hash<QOB::Real> {
    std::size_t operator()(QOB::Real const& value) const noexcept { return hash_value(value); }
};
