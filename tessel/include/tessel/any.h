#pragma once

#include "tessel/export.h"

#include <concepts>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace Tessel {

/// Raised when an any is cast to a type other than that of its value.
class TESSEL_EXPORT bad_any_cast : public std::exception {
public:
    bad_any_cast() noexcept;
    /// The text names both types; `held` is `typeid(void)` for an empty any.
    bad_any_cast(std::type_info const& held, std::type_info const& requested);
    bad_any_cast(bad_any_cast const& other) noexcept;
    bad_any_cast& operator=(bad_any_cast const& other) noexcept;
    ~bad_any_cast() override;

    char const* what() const noexcept override;

private:
    // Shared, because copying an exception must not raise another. Null for the default text.
    std::shared_ptr<const std::string> text_;
};

class any;

namespace Detail {
/// A type that can be boxed. That it is copy-constructible is asserted elsewhere: checking it here
/// would recurse for a class with both a copy constructor and a constructor from any.
template <class V>
concept NotAny = !std::same_as<std::decay_t<V>, any>;
} // namespace Detail

/// One value of any copy-constructible type, or none. Copies are deep; a move transfers the value
/// without touching it. Boxing allocates once, access by reference never.
class TESSEL_EXPORT any {
public:
    class placeholder;
    template <class T>
    class holder;

    any() noexcept = default;

    /// Boxes a copy of `value`; arrays and functions decay to pointers.
    template <Detail::NotAny V>
    // NOLINTNEXTLINE(google-explicit-constructor, bugprone-forwarding-reference-overload)
    any(V&& value);

    any(any const& other);
    any(any&& other) noexcept = default;
    any& operator=(any const& other);
    any& operator=(any&& other) noexcept = default;
    ~any();

    bool empty() const noexcept { return content_ == nullptr; }
    void reset() noexcept { content_.reset(); }
    void swap(any& other) noexcept { content_.swap(other.content_); }
    friend void swap(any& a, any& b) noexcept { a.swap(b); }

    /// The type of the value; `typeid(void)` if there is none.
    std::type_info const& type() const noexcept;

    /// The box of the value, owned by this any; null if it is empty.
    placeholder const* content() const noexcept { return content_.get(); }

    /// The value's address if it has exactly the type T, otherwise null. Never allocates.
    template <class T>
    T const* target() const noexcept;
    template <class T>
    T* target() noexcept {
        return const_cast<T*>(std::as_const(*this).template target<T>());
    }

    /// Two empty anys are equal. Two values are equal if they have the same type and its own
    /// operator says so; a value of a type without one is equal only to itself.
    friend bool operator==(any const& a, any const& b) { return a.isEqualTo(b); }

private:
    bool isEqualTo(any const& other) const;

    std::unique_ptr<placeholder> content_;
};

/// The box of a value whose type is not known to the caller. The order of the virtual operations is
/// fixed, because boxes cross library boundaries.
class TESSEL_EXPORT any::placeholder {
public:
    virtual ~placeholder();
    /// The address of a value that the box only refers to. Null for a holder, which owns its value.
    virtual void const* referredValue() const noexcept = 0;
    virtual std::type_info const& type() const noexcept = 0;
    /// A new box with a copy of the value.
    virtual std::unique_ptr<placeholder> clone() const = 0;
    /// Whether the other is a box of the same type with an equal value.
    virtual bool isEqualTo(placeholder const& other) const = 0;

protected:
    placeholder() = default;
    placeholder(placeholder const&) = default;
    placeholder& operator=(placeholder const&) = default;
};

/// The box that owns a value of type T.
template <class T>
class any::holder final : public any::placeholder {
public:
    template <class... Args>
    explicit holder(std::in_place_t /*tag*/, Args&&... args)
        : value_(std::forward<Args>(args)...) {}

    void const* referredValue() const noexcept override { return nullptr; }
    std::type_info const& type() const noexcept override { return typeid(T); }
    std::unique_ptr<placeholder> clone() const override {
        return std::make_unique<holder>(std::in_place, value_);
    }
    bool isEqualTo(placeholder const& other) const override {
        if (other.type() != typeid(T)) {
            return false;
        }
        if constexpr (requires(T const& a, T const& b) {
                          { a == b } -> std::convertible_to<bool>;
                      }) {
            return value_ == static_cast<holder const&>(other).value_;
        } else {
            return this == &other;
        }
    }

    T const& value() const noexcept { return value_; }

private:
    T value_;
};

template <Detail::NotAny V>
// NOLINTNEXTLINE(bugprone-forwarding-reference-overload): the constraint leaves out copies
any::any(V&& value)
    : content_(std::make_unique<holder<std::decay_t<V>>>(std::in_place, std::forward<V>(value))) {
    static_assert(std::is_copy_constructible_v<std::decay_t<V>>, "an any copies its value");
}

template <class T>
T const* any::target() const noexcept {
    if (content_ == nullptr || content_->type() != typeid(T)) {
        return nullptr;
    }
    // The type check does not see a const of T, and boxes are made for plain types only.
    return std::addressof(static_cast<holder<std::remove_cv_t<T>> const&>(*content_).value());
}

namespace Detail {
/// Out of line, so that a cast costs its callers no more than the comparison.
[[noreturn]] TESSEL_EXPORT void raiseBadAnyCast(any const& value, std::type_info const& requested);
} // namespace Detail

/// The value's address if it has exactly the type T, otherwise null; null for a null pointer.
template <class T>
T const* any_cast(any const* value) noexcept {
    return value == nullptr ? nullptr : value->target<T>();
}
template <class T>
T* any_cast(any* value) noexcept {
    return value == nullptr ? nullptr : value->target<T>();
}

/// The value as a T, which may be a reference; raises bad_any_cast if it has another type.
template <class T>
T any_cast(any const& value) {
    using Value = std::remove_cvref_t<T>;
    static_assert(std::is_constructible_v<T, Value const&>, "T is made from a constant value");
    if (const auto* held = value.target<Value>()) {
        return static_cast<T>(*held);
    }
    Detail::raiseBadAnyCast(value, typeid(Value));
}
template <class T>
T any_cast(any& value) {
    using Value = std::remove_cvref_t<T>;
    static_assert(std::is_constructible_v<T, Value&>, "T is made from a value");
    if (auto* held = value.target<Value>()) {
        return static_cast<T>(*held);
    }
    Detail::raiseBadAnyCast(value, typeid(Value));
}
template <class T>
T any_cast(any&& value) {
    using Value = std::remove_cvref_t<T>;
    static_assert(std::is_constructible_v<T, Value>, "T is made from a value that is given up");
    if (auto* held = value.target<Value>()) {
        return static_cast<T>(std::move(*held));
    }
    Detail::raiseBadAnyCast(value, typeid(Value));
}

} // namespace Tessel
