#pragma once

#include "tessel/export.h"
#include "tessel/type.h"

#include <map>
#include <string>
#include <string_view>

namespace Tessel {

/// The description of an integer-backed enumeration: a table of numbers and their literals. Derived
/// classes say how a boxed value becomes its number and back.
///
/// The text of a value is its literal, or its decimal number if the table has none for it; either
/// reads back to the same number. A text that is neither is an error that names the known literals.
/// The bytes of a value are its number, four bytes with the lowest first.
class TESSEL_EXPORT EnumType : public Type {
public:
    any convertFromString(const std::string& text, ErrorHolder& errors) const override;
    std::string convertToString(const any& value) const override;
    any convertFromByteArray(const ByteArray& bytes, ErrorHolder& errors) const override;
    ByteArray convertToByteArray(const any& value) const override;
    /// The value of the number 0, whether or not the table holds it.
    any defaultConstruct() const override;
    /// Whether class, name and table are the same.
    bool isEqualTo(Type* other) const override;
    /// Orders by class, then by name, then by table.
    bool isLessThan(Type* other) const override;

    /// The number of a boxed value; raises bad_any_cast for a value of another type.
    virtual int toInteger(const any& value) const = 0;
    /// A boxed value of any number, also one without a literal.
    virtual any fromInteger(int number) const = 0;

    /// Enters a literal. Raises std::invalid_argument, and changes nothing, if the table holds the
    /// number or the literal, or if the literal reads as another number.
    void addLiteral(int number, std::string literal);
    const std::map<int, std::string>& getLiterals() const noexcept { return literals_; }
    /// The name of the type in error texts.
    const std::string& getName() const noexcept { return name_; }

protected:
    explicit EnumType(std::string name);
    EnumType(const EnumType& other);
    EnumType& operator=(const EnumType& other);
    ~EnumType() override;

private:
    const int* findLiteral(std::string_view literal) const noexcept;

    std::string name_;
    std::map<int, std::string> literals_;
};

} // namespace Tessel
