#include "tessel/typeinfo.h"

#include "tessel/type.h"

#include <utility>

namespace Tessel {

TypeInfo::TypeInfo(std::shared_ptr<Type> type) noexcept : type_(std::move(type)) {
}
TypeInfo::TypeInfo(TypeInfo const& other) noexcept = default;
TypeInfo& TypeInfo::operator=(TypeInfo const& other) noexcept = default;
TypeInfo::~TypeInfo() = default;

std::string TypeInfo::convertToString(any const& value) const {
    return type_->convertToString(value);
}

any TypeInfo::convertFromString(std::string const& text) const {
    ErrorHolder errors;
    return convertFromString(text, errors);
}

any TypeInfo::convertFromString(std::string const& text, ErrorHolder& errors) const {
    any value = type_->convertFromString(text, errors);
    if (errors.hasError()) {
        value.reset();
    }
    return value;
}

bool TypeInfo::isEqualTo(TypeInfo const& other) const {
    return type_ == other.type_ || type_->isEqualTo(other.type_.get());
}

bool TypeInfo::isLessThan(TypeInfo const& other) const {
    return type_->isLessThan(other.type_.get());
}

} // namespace Tessel
