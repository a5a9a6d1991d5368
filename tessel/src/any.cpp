#include "tessel/any.h"

#include <boost/core/demangle.hpp>

namespace Tessel {

bad_any_cast::bad_any_cast() noexcept = default;

bad_any_cast::bad_any_cast(const std::type_info& held, const std::type_info& requested) {
    const std::string wanted = "the type (" + boost::core::demangle(requested.name()) + ").";
    text_ = std::make_shared<const std::string>(
        held == typeid(void) ? "The any is empty and holds no value of " + wanted
                             : "The any holds a value of the type (" +
                                   boost::core::demangle(held.name()) + "), not of " + wanted);
}

bad_any_cast::bad_any_cast(const bad_any_cast& other) noexcept = default;
bad_any_cast& bad_any_cast::operator=(const bad_any_cast& other) noexcept = default;
bad_any_cast::~bad_any_cast() = default;

const char* bad_any_cast::what() const noexcept {
    return text_ == nullptr ? "The any holds no value of the requested type." : text_->c_str();
}

any::placeholder::~placeholder() = default;

any::any(const any& other)
    : content_(other.content_ == nullptr ? nullptr : other.content_->clone()) {
}

any& any::operator=(const any& other) {
    any copy(other);
    swap(copy);
    return *this;
}

any::~any() = default;

const std::type_info& any::type() const noexcept {
    return content_ == nullptr ? typeid(void) : content_->type();
}

bool any::isEqualTo(const any& other) const {
    if (content_ == nullptr || other.content_ == nullptr) {
        return content_ == other.content_;
    }
    return content_->isEqualTo(*other.content_);
}

void Detail::raiseBadAnyCast(const any& value, const std::type_info& requested) {
    throw bad_any_cast(value.type(), requested);
}

} // namespace Tessel
