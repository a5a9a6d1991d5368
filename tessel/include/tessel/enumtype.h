#pragma once

#include "tessel/export.h"
#include "tessel/type.h"

#include <map>
#include <string>
#include <string_view>

namespace Tessel {

/// The description of an integer-backed enumeration: a table of numbers and their literals. Derived
/// classes convert between a boxed value and its number.
///
/// The text of a value is its literal, or its decimal number if it has no literal; both read back
/// as the same number. Any other text is an error, whose message lists the known literals. The
/// bytes of a value are its number as four bytes, little-endian.
class TESSEL_EXPORT EnumType : public Type {
public:
    any convertFromString(std::string const& text, ErrorHolder& errors) const override;
    std::string convertToString(any const& value) const override;
    any convertFromByteArray(ByteArray const& bytes, ErrorHolder& errors) const override;
    ByteArray convertToByteArray(any const& value) const override;
    /// The value of the number 0, whether or not the table holds it.
    any defaultConstruct() const override;
    /// Whether class, name and table are the same.
    bool isEqualTo(Type* other) const override;
    /// Orders by class, then by name, then by table.
    bool isLessThan(Type* other) const override;

    /// The number of a boxed value; raises bad_any_cast for a value of another type.
    virtual int toInteger(any const& value) const = 0;
    /// A boxed value of any number, also one without a literal.
    virtual any fromInteger(int number) const = 0;

    /// Enters a literal. Raises std::invalid_argument, and changes nothing, if the table already
    /// has the number or the literal, or if the literal reads as another number.
    void addLiteral(int number, std::string literal);
    std::map<int, std::string> const& getLiterals() const noexcept { return literals_; }
    /// The name of the type in error texts.
    std::string const& getName() const noexcept { return name_; }

protected:
    explicit EnumType(std::string name);
    EnumType(EnumType const& other);
    EnumType& operator=(EnumType const& other);
    ~EnumType() override;

private:
    int const* findLiteral(std::string_view literal) const noexcept;

    std::string name_;
    std::map<int, std::string> literals_;
};

} // namespace Tessel
