#pragma once

#include "qob/qob/object.h"
#include "qob/qob/string.h"
#include "qob/qob/valueobjectfactory.h"

#include <concepts>
#include <string>
#include <typeinfo>
#include <utility>

namespace QOB {

/// The object that holds one value of class T in itself: a boxed value is one allocation. Handles
/// count in place; the box is freed with the last of them. T names its type (getTypeName) and has a
/// text (toString).
template <class T>
class ValueBox final : public NSInterface::ValueObjectIntf {
public:
    explicit ValueBox(T value) : value_(std::move(value)) { countInPlace(); }

    void incRef() const override { ++referenceCount_; }
    void decRef() const override { internal::releaseCounted(referenceCount_, this); }
    int numRef() const override { return referenceCount_; }

    bool deviant_isValid(Deviant) const override { return true; }
    /// The name of the value's type: a value has no immutable form of its own.
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

/// Makes an object of a value; `Handle` is ValueObject or Object.
template <class Handle = ValueObject, class T>
Handle boxValue(T value) {
    return {new ValueBox<T>(std::move(value)), Deviant()};
}

/// The value in a box; raises Tessel::bad_any_cast if it has another type. Allocates nothing where
/// the box is one of ours.
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
