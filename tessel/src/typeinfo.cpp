#include "tessel/typeinfo.h"

#include "tessel/type.h"

#include <utility>

namespace Tessel {

TypeInfo::TypeInfo(std::shared_ptr<Type> type) noexcept : type_(std::move(type)) {
}
TypeInfo::TypeInfo(const TypeInfo& other) noexcept = default;
TypeInfo& TypeInfo::operator=(const TypeInfo& other) noexcept = default;
TypeInfo::~TypeInfo() = default;

std::string TypeInfo::convertToString(const any& value) const {
    return type_->convertToString(value);
}

any TypeInfo::convertFromString(const std::string& text) const {
    ErrorHolder errors;
    return convertFromString(text, errors);
}

any TypeInfo::convertFromString(const std::string& text, ErrorHolder& errors) const {
    any value = type_->convertFromString(text, errors);
    if (errors.hasError()) {
        value.reset();
    }
    return value;
}

bool TypeInfo::isEqualTo(const TypeInfo& other) const {
    return type_ == other.type_ || type_->isEqualTo(other.type_.get());
}

bool TypeInfo::isLessThan(const TypeInfo& other) const {
    return type_->isLessThan(other.type_.get());
}

} // namespace Tessel
