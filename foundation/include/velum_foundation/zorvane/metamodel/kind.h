#pragma once

#include "qob/qob/datatype.h"
#include "qob/qob/object.h"
#include "qob/qob/string.h"
#include "tessel/typeinfo.h"
#include "velum_foundation/export.h"

#include <array>
#include <compare>
#include <cstddef>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Zorvane::metamodel {

/// Base of the enumerated value classes: one number, copied like an int. `Literals` provides the
/// enumeration `Value`, the literals of its numbers from 0 on (`texts`), the dotted name of the
/// type (`typeName`), and `fail`, which reports a failed check at the class's own source file.
///
/// Numbers without a literal are stored, compared and hashed like any other.
template <class Self, class Literals>
class VELUM_FOUNDATION_EXPORT Kind : public Literals {
public:
    using typename Literals::Value;

    /// Number 0.
    constexpr Kind() noexcept = default;
    constexpr Kind(int number) noexcept : number_(number) {}
    constexpr Kind(Value value) noexcept : number_(value) {}

    /// Unboxing. An empty handle or an invalid object gives number 0 without an error. Raises
    /// QOB::Exception for an object that is no value, Tessel::bad_any_cast for another value.
    explicit Kind(QOB::ImmutableValueObject const& object);
    explicit Kind(QOB::ValueObject const& object);
    explicit Kind(QOB::ImmutableObject const& object);
    explicit Kind(QOB::Object const& object);

    /// Boxes a copy.
    operator QOB::Object() const;
    operator QOB::ValueObject() const;

    constexpr operator Value() const noexcept { return static_cast<Value>(number_); }
    constexpr Value operator()() const noexcept { return *this; }
    /// True, whatever the number.
    constexpr bool isValid() const noexcept { return true; }

    /// The literal; empty if the number has none.
    constexpr std::string_view literal() const noexcept {
        auto const index = static_cast<std::size_t>(number_);
        return index < Literals::texts.size() ? Literals::texts[index] : std::string_view();
    }
    /// The value of a literal, if the text is one.
    static constexpr std::optional<Self> findLiteral(std::string_view text) noexcept {
        for (int number = 0; std::string_view const known : Literals::texts) {
            if (known == text) {
                return Self(number);
            }
            ++number;
        }
        return std::nullopt;
    }
    /// The literal, or the decimal number if it has none.
    QOB::String toString() const;
    /// Reads what toString writes; raises Tessel::bad_any_cast for any other text.
    static Self fromString(std::string const& text);

    /// All literals in the order of their numbers.
    static std::map<Self, std::string> getLiterals();
    static std::string getTypeName();
    /// The run-time description of this class; one per process.
    static Tessel::TypeInfo const& getTypeInfo();
    /// The live enumeration in the metamodel; empty until the library is initialized.
    static QOB::ImmutableDataType MetaDataType();
    QOB::ImmutableDataType getMetaDataType() const { return MetaDataType(); }

    /// The number.
    constexpr unsigned hash() const noexcept { return static_cast<unsigned>(number_); }

    friend constexpr bool operator==(Self const& a, Self const& b) noexcept {
        return a.number_ == b.number_;
    }
    friend constexpr bool operator==(Self const& a, Value b) noexcept { return a.number_ == b; }
    friend constexpr bool operator==(Self const& a, int b) noexcept { return a.number_ == b; }
    /// Orders by number, not by magnitude of the unit.
    friend constexpr std::strong_ordering operator<=>(Self const& a, Self const& b) noexcept {
        return a.number_ <=> b.number_;
    }
    friend constexpr std::strong_ordering operator<=>(Self const& a, Value b) noexcept {
        return a.number_ <=> static_cast<int>(b);
    }
    friend constexpr std::strong_ordering operator<=>(Self const& a, int b) noexcept {
        return a.number_ <=> b;
    }

private:
    int number_ = 0;
};

template <class Self, class Literals>
std::ostream& operator<<(std::ostream& out, Kind<Self, Literals> const& kind) {
    return out << kind.toString();
}

/// The standard's hash of a value class, by its hash_value.
template <class Value>
struct ValueHash {
    std::size_t operator()(Value const& value) const noexcept { return hash_value(value); }
};

} // namespace Zorvane::metamodel
