#include "tessel/any.h"

#include <boost/core/demangle.hpp>

namespace Tessel {

bad_any_cast::bad_any_cast() noexcept = default;

bad_any_cast::bad_any_cast(std::type_info const& held, std::type_info const& requested) {
    const std::string wanted = "the type (" + boost::core::demangle(requested.name()) + ").";
    text_ = std::make_shared<const std::string>(
        held == typeid(void) ? "The any is empty and holds no value of " + wanted
                             : "The any holds a value of the type (" +
                                   boost::core::demangle(held.name()) + "), not of " + wanted);
}

bad_any_cast::bad_any_cast(bad_any_cast const& other) noexcept = default;
bad_any_cast& bad_any_cast::operator=(bad_any_cast const& other) noexcept = default;
bad_any_cast::~bad_any_cast() = default;

char const* bad_any_cast::what() const noexcept {
    return text_ == nullptr ? "The any holds no value of the requested type." : text_->c_str();
}

any::placeholder::~placeholder() = default;

any::any(any const& other)
    : content_(other.content_ == nullptr ? nullptr : other.content_->clone()) {
}

any& any::operator=(any const& other) {
    any copy(other);
    swap(copy);
    return *this;
}

any::~any() = default;

std::type_info const& any::type() const noexcept {
    return content_ == nullptr ? typeid(void) : content_->type();
}

bool any::isEqualTo(any const& other) const {
    if (content_ == nullptr || other.content_ == nullptr) {
        return content_ == other.content_;
    }
    return content_->isEqualTo(*other.content_);
}

void Detail::raiseBadAnyCast(any const& value, std::type_info const& requested) {
    throw bad_any_cast(value.type(), requested);
}

} // namespace Tessel
