#include "tessel/type.h"

#include "tessel/encoding.h"
#include "tessel/typeinfo.h"

#include <memory>
#include <stdexcept>
#include <typeinfo>
#include <utility>

namespace Tessel {

Type::Type() = default;
Type::Type(Type const& other) = default;
Type& Type::operator=(Type const& other) = default;
Type::~Type() = default;

any Type::convertFromByteArray(ByteArray const& bytes, ErrorHolder& errors) const {
    return convertFromString(bytes.toText(), errors);
}

ByteArray Type::convertToByteArray(any const& value) const {
    return ByteArray::fromText(convertToString(value));
}

any Type::convertFromUString(std::wstring const& text, ErrorHolder& errors) const {
    std::string narrow;
    try {
        narrow = wideToUtf8(text);
    } catch (EncodingError const& error) {
        errors.setError(error.what());
        return {};
    }
    return convertFromString(narrow, errors);
}

std::wstring Type::convertToUString(any const& value) const {
    return utf8ToWide(convertToString(value));
}

bool Type::isValid(any const& value) const {
    return !value.empty() && value.type() == defaultConstruct().type();
}

bool Type::isEqualTo(Type* other) const {
    return other != nullptr && typeid(*this) == typeid(*other);
}

bool Type::isLessThan(Type* other) const {
    return other != nullptr && typeid(*this).before(typeid(*other));
}

TypeInfo Type::CreateTypeInfo(Type* type) {
    if (type == nullptr) {
        throw std::invalid_argument("Type info cannot be made of a null type.");
    }
    return TypeInfo(std::shared_ptr<Type>(type));
}

Type* Type::GetBaseType(TypeInfo const& info) noexcept {
    return info.type_.get();
}

} // namespace Tessel
