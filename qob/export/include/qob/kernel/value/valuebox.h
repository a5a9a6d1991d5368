#pragma once

#include "qob/qob/object.h"
#include "qob/qob/string.h"
#include "qob/qob/valueobjectfactory.h"

#include <concepts>
#include <cstddef>
#include <new>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace QOB {

class Boolean;
class Integer;
class Real;

namespace internal {
/// One free block for boxes of each size in words, or null, so that reading values one after the
/// other as objects allocates only once. Larger boxes have none.
inline constexpr std::size_t SpareBoxSizes = 8;
extern QOB_EXPORT void* spareBoxes[SpareBoxSizes];

template <std::size_t Size>
void* allocateBox() {
    constexpr std::size_t words = Size / sizeof(void*);
    if constexpr (words < SpareBoxSizes) {
        if (spareBoxes[words] != nullptr) {
            return std::exchange(spareBoxes[words], nullptr);
        }
    }
    return ::operator new(Size);
}
template <std::size_t Size>
void freeBox(void* memory) noexcept {
    constexpr std::size_t words = Size / sizeof(void*);
    if constexpr (words < SpareBoxSizes) {
        if (spareBoxes[words] == nullptr) {
            spareBoxes[words] = memory;
            return;
        }
    }
    ::operator delete(memory);
}

/// A box with a value of another library. All of them are in one list, so that a library that is
/// being unloaded can find its own.
class QOB_EXPORT LinkedBox : public NSInterface::ValueObjectIntf {
public:
    LinkedBox(LinkedBox const&) = delete;
    LinkedBox& operator=(LinkedBox const&) = delete;
    ~LinkedBox() override;
    LinkedBox* next() const noexcept { return next_; }

protected:
    LinkedBox() noexcept;

private:
    LinkedBox* previous_ = nullptr;
    LinkedBox* next_;
};
extern QOB_EXPORT LinkedBox* firstLinkedBox;

inline LinkedBox::LinkedBox() noexcept : next_(std::exchange(firstLinkedBox, this)) {
    if (next_ != nullptr) {
        next_->previous_ = this;
    }
}

template <class T>
using BoxBase = std::conditional_t<std::same_as<T, Integer> || std::same_as<T, Real> ||
                                       std::same_as<T, Boolean> || std::same_as<T, String>,
                                   NSInterface::ValueObjectIntf,
                                   LinkedBox>;
} // namespace internal

/// An object that contains one value of class T: boxing allocates at most once. Handles count in
/// place; the box is freed with the last of them. T provides its type name (getTypeName) and a text
/// (toString).
template <class T>
class ValueBox final : public internal::BoxBase<T> {
    using Base = internal::BoxBase<T>;
    using Base::referenceCount_;

public:
    explicit ValueBox(T value) : value_(std::move(value)) { this->countInPlace(); }

    static void* operator new(std::size_t /*size*/) {
        static_assert(alignof(ValueBox) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
        return internal::allocateBox<sizeof(ValueBox)>();
    }
    static void operator delete(void* memory) noexcept {
        internal::freeBox<sizeof(ValueBox)>(memory);
    }

    void incRef() const override { ++referenceCount_; }
    /// Deletes at once, without the queue: a value keeps no objects alive that would have to wait
    /// in it.
    void decRef() const override {
        if (referenceCount_ == 1) {
            delete this;
        } else {
            internal::releaseCounted(referenceCount_, this);
        }
    }
    int numRef() const override { return referenceCount_; }

    bool deviant_isValid(Deviant) const override { return true; }
    /// The name of the value's type. A value has no separate immutable form.
    char const* getLumvoName(bool) const override {
        static std::string const name = T::getTypeName();
        return name.c_str();
    }
    String toString(Deviant) const override {
        if constexpr (std::same_as<T, String>) {
            return value_;
        } else {
            return value_.toString();
        }
    }
    /// A new box of the same type.
    ImmutableObject convertFromString(Deviant, String text) override {
        return ValueObjectFactory::createFromString(T::getTypeName(), text);
    }

    void getValue(Tessel::any& value) const override { value = Tessel::any(value_); }
    std::string getValueTypeName() const override { return T::getTypeName(); }
    void const* findValue(std::type_info const& type) const noexcept override {
        return type == typeid(T) ? &value_ : nullptr;
    }

private:
    T value_;
};

/// Boxes a value; `Handle` is ValueObject or Object.
template <class Handle = ValueObject, class T>
Handle boxValue(T value) {
    return {new ValueBox<T>(std::move(value)), Deviant()};
}

/// The value in a box; raises Tessel::bad_any_cast if it has another type. Allocates nothing for a
/// ValueBox.
template <class T>
T unboxValue(NSInterface::ValueObjectIntf const& object) {
    if (void const* const held = object.findValue(typeid(T))) {
        return *static_cast<T const*>(held);
    }
    Tessel::any value;
    object.getValue(value);
    return Tessel::any_cast<T>(std::move(value));
}

template <class T>
void ValueObjectFactory::registerType(Tessel::TypeInfo const& info) {
    registerType(T::getTypeName(), info, [](Tessel::any const& value) {
        return boxValue(Tessel::any_cast<T const&>(value));
    });
}

} // namespace QOB
