#pragma once

#include "qob/qob/boolean.h"
#include "qob/qob/datatype.h"
#include "qob/qob/object.h"
#include "qob/qob/string.h"
#include "velum_foundation/zorvane/metamodel/kind.h"
#include "velum_types/export.h"

#include <compare>
#include <concepts>
#include <iosfwd>
#include <string>
#include <string_view>

namespace Zorvane::metamodel::types {

/// Base of the value classes that pair a number with a unit. Both are kept as given: the number may
/// be invalid, the unit may be a number without a literal, and no operation converts between units.
/// Both are mandatory: there always is a value and a unit, and removing one does nothing.
///
/// `Self` provides its name (getTypeName), its run-time description (getTypeInfo), and `fail`,
/// which reports a failed check at its own source file.
template <class Self, class NumberType, class UnitType>
class VELUM_TYPES_EXPORT Quantity {
public:
    using Number = NumberType;
    using Unit = UnitType;

    /// An invalid number, unit number 0.
    constexpr Quantity() noexcept = default;
    constexpr Quantity(Number value, Unit unit) noexcept : value_(value), unit_(unit) {}

    /// Unboxing. Raises QOB::Exception for an empty handle and for an object that is no value,
    /// Tessel::bad_any_cast for another value.
    explicit Quantity(QOB::ImmutableValueObject const& object);
    explicit Quantity(QOB::ValueObject const& object);
    explicit Quantity(QOB::ImmutableObject const& object);
    explicit Quantity(QOB::Object const& object);

    /// Boxes a copy.
    operator QOB::Object() const { return toQOBObject(); }
    operator QOB::ValueObject() const { return toQOBValueObject(); }
    QOB::Object toQOBObject() const;
    QOB::ValueObject toQOBValueObject() const;

    constexpr Number getValue() const noexcept { return value_; }
    constexpr Unit getUnit() const noexcept { return unit_; }
    constexpr void setValue(Number const& value) noexcept { value_ = value; }
    constexpr void setUnit(Unit const& unit) noexcept { unit_ = unit; }
    constexpr bool hasValue() const noexcept { return true; }
    constexpr bool hasUnit() const noexcept { return true; }
    constexpr void removeValue() noexcept {}
    constexpr void removeUnit() noexcept {}
    /// Always true, even if the number is invalid.
    constexpr bool isValid() const noexcept { return true; }

    /// The two members as properties, for generic code.
    constexpr QOB::Boolean hasObjectValue() const noexcept { return true; }
    constexpr QOB::Boolean hasObjectUnit() const noexcept { return true; }
    QOB::Object getValueAsImmutableObject() const;
    QOB::Object getUnitAsImmutableObject() const;
    /// Raise Tessel::bad_any_cast for an object of another type, then QOB::Exception for one that
    /// isn't valid.
    void setOrAddObjectValue(QOB::Object const& object);
    void setOrAddObjectUnit(QOB::Object const& object);
    /// Change nothing, but refuse what the setters refuse.
    void removeObjectValue(QOB::ImmutableObject const& object);
    void removeObjectUnit(QOB::ImmutableObject const& object);
    constexpr void removeObjectFirstValue() noexcept {}
    constexpr void removeObjectFirstUnit() noexcept {}

    /// The number and the literal of the unit with "|" between them; an invalid number is empty.
    QOB::String toString() const;
    std::wstring toUString() const;
    /// Reads what toString writes. Raises QOB::Exception if there are more than two parts, or if a
    /// part is not a number or not a unit.
    static Self fromString(QOB::String const& text);
    static Self fromUString(std::wstring const& text);

    /// The live element of the metamodel; empty until the library is initialized.
    static QOB::ImmutableDataType MetaDataType();
    QOB::ImmutableDataType getMetaDataType() const { return MetaDataType(); }

    constexpr unsigned hash() const noexcept {
        constexpr unsigned offset = 177573;
        constexpr unsigned factor = 33;
        constexpr unsigned mask = 0x7fff'ffff;
        unsigned const number = hash_value(value_) + offset;
        return (number * factor + static_cast<unsigned>(unit_())) & mask;
    }

    friend constexpr bool operator==(Self const& a, Self const& b) noexcept {
        return !(a.value_ != b.value_) && a.unit_ == b.unit_;
    }
    /// Orders by number, then by the unit's number, so 1 GB comes before 2 bit.
    friend constexpr bool operator<(Self const& a, Self const& b) noexcept {
        if (a.value_ < b.value_) {
            return true;
        }
        return !(a.value_ != b.value_) && a.unit_ < b.unit_;
    }
    friend constexpr bool operator<=(Self const& a, Self const& b) noexcept {
        return a == b || a < b;
    }
    friend constexpr bool operator>(Self const& a, Self const& b) noexcept { return !(a <= b); }
    friend constexpr bool operator>=(Self const& a, Self const& b) noexcept { return !(a < b); }
    /// Available only where the numbers are totally ordered.
    friend constexpr std::strong_ordering operator<=>(Self const& a, Self const& b) noexcept
        requires std::three_way_comparable<Number, std::strong_ordering> {
        std::strong_ordering const order = a.value_ <=> b.value_;
        return order != 0 ? order : a.unit_ <=> b.unit_;
    }

private:
    static Self fromParts(QOB::String const& value, std::string_view unit);

    Number value_;
    Unit unit_;
};

template <class Self, class Number, class Unit>
std::ostream& operator<<(std::ostream& out, Quantity<Self, Number, Unit> const& quantity) {
    return out << quantity.toString();
}

} // namespace Zorvane::metamodel::types
