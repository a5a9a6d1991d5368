#pragma once

#include "tessel/any.h"
#include "tessel/bytearray.h"
#include "tessel/errorholder.h"
#include "tessel/export.h"

#include <string>

namespace Tessel {

class TypeInfo;

/// What the system knows of a type at run time: how its values become text and bytes and come back.
/// A conversion from text or bytes that fails sets the error of the holder and gives an empty any.
/// A conversion to text or bytes raises bad_any_cast for a value of another type.
/// Narrow texts are UTF-8. The order of the virtual operations is binding: derived classes stand in
/// other libraries.
class TESSEL_EXPORT Type {
public:
    virtual any convertFromString(const std::string& text, ErrorHolder& errors) const = 0;
    virtual std::string convertToString(const any& value) const = 0;
    /// The base form takes the bytes as narrow text.
    virtual any convertFromByteArray(const ByteArray& bytes, ErrorHolder& errors) const;
    /// The base form writes the bytes of the narrow text.
    virtual ByteArray convertToByteArray(const any& value) const;
    /// The base form goes through the narrow text; a wide text that has none is an error.
    virtual any convertFromUString(const std::wstring& text, ErrorHolder& errors) const;
    /// The base form goes through the narrow text; raises EncodingError if that is not UTF-8.
    virtual std::wstring convertToUString(const any& value) const;
    /// A box with a default-constructed value.
    virtual any defaultConstruct() const = 0;
    /// Whether the any holds a value of this type. The base form compares with the type of what
    /// defaultConstruct() gives; an empty any is never valid.
    virtual bool isValid(const any& value) const;
    /// Whether the other describes the same type; false for null. The base form compares classes.
    virtual bool isEqualTo(Type* other) const;
    /// A total order over types, steady as long as the process runs; false for null. The base form
    /// orders by class.
    virtual bool isLessThan(Type* other) const;
    /// A copy, owned by the caller.
    virtual Type* clone() const = 0;
    virtual ~Type();

    /// The handle of a new description; takes ownership of `type`, also if it raises. Raises
    /// std::invalid_argument for null.
    static TypeInfo CreateTypeInfo(Type* type);
    /// The description that `info` owns; never null, lives as long as `info` or a copy of it.
    static Type* GetBaseType(const TypeInfo& info) noexcept;

protected:
    Type();
    Type(const Type& other);
    Type& operator=(const Type& other);
};

} // namespace Tessel
