#pragma once

#include "tessel/any.h"
#include "tessel/bytearray.h"
#include "tessel/errorholder.h"
#include "tessel/export.h"

#include <string>

namespace Tessel {

class TypeInfo;

/// The description of a type at run time: how to convert its values to text and bytes and back. A
/// failed conversion from text or bytes sets the holder's error and returns an empty any. A
/// conversion to text or bytes raises bad_any_cast for a value of another type. Narrow texts are
/// UTF-8. The order of the virtual operations is fixed, because other libraries derive classes from
/// this one.
class TESSEL_EXPORT Type {
public:
    virtual any convertFromString(std::string const& text, ErrorHolder& errors) const = 0;
    virtual std::string convertToString(any const& value) const = 0;
    /// By default, reads the bytes as narrow text.
    virtual any convertFromByteArray(ByteArray const& bytes, ErrorHolder& errors) const;
    /// By default, returns the bytes of the narrow text.
    virtual ByteArray convertToByteArray(any const& value) const;
    /// By default, converts the narrow form of the text; a wide text without one is an error.
    virtual any convertFromUString(std::wstring const& text, ErrorHolder& errors) const;
    /// By default, widens the narrow text; raises EncodingError if that is not UTF-8.
    virtual std::wstring convertToUString(any const& value) const;
    /// A box with a default-constructed value.
    virtual any defaultConstruct() const = 0;
    /// Whether the any holds a value of this type. By default, compares with the type of
    /// defaultConstruct(); an empty any is never valid.
    virtual bool isValid(any const& value) const;
    /// Whether the other describes the same type; false for null. By default, compares classes.
    virtual bool isEqualTo(Type* other) const;
    /// A total order of types, stable while the process runs; false for null. By default, orders by
    /// class.
    virtual bool isLessThan(Type* other) const;
    /// A copy, owned by the caller.
    virtual Type* clone() const = 0;
    virtual ~Type();

    /// A handle of a new description. Takes ownership of `type` even if it raises. Raises
    /// std::invalid_argument for null.
    static TypeInfo CreateTypeInfo(Type* type);
    /// The description that `info` owns; never null, lives as long as `info` or a copy of it.
    static Type* GetBaseType(TypeInfo const& info) noexcept;

protected:
    Type();
    Type(Type const& other);
    Type& operator=(Type const& other);
};

} // namespace Tessel
