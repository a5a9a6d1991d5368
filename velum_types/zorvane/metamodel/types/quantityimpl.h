#pragma once

#include "qob/kernel/value/valuebox.h"
#include "qob/qob/assert.h"
#include "qob/qob/serializer/datatypestringrepresenter.h"
#include "valuefailure.h"
#include "velum_types/zorvane/metamodel/types/quantity.h"
#include "velum_types/zorvane/metamodel/types/quantitytypeinfo.h"

#include <exception>
#include <ostream>
#include <utility>
#include <vector>

/// The bodies of Quantity and QuantityTypeInfo, for the one source of each class that instantiates
/// them.
namespace Zorvane::metamodel::types {

template <class Self, class Number, class Unit>
Quantity<Self, Number, Unit>::Quantity(QOB::ImmutableValueObject const& object) {
    if (object.get() == nullptr) {
        Self::fail(InternalFailure);
    }
    *this = QOB::unboxValue<Self>(*object.get());
}

template <class Self, class Number, class Unit>
Quantity<Self, Number, Unit>::Quantity(QOB::ValueObject const& object)
    : Quantity(static_cast<QOB::ImmutableValueObject const&>(object)) {
}

template <class Self, class Number, class Unit>
Quantity<Self, Number, Unit>::Quantity(QOB::ImmutableObject const& object)
    : Quantity(QOB::ImmutableValueObject(object)) {
}

template <class Self, class Number, class Unit>
Quantity<Self, Number, Unit>::Quantity(QOB::Object const& object)
    : Quantity(QOB::ImmutableValueObject(object)) {
}

template <class Self, class Number, class Unit>
QOB::ValueObject Quantity<Self, Number, Unit>::toQOBValueObject() const {
    return QOB::boxValue(Self(value_, unit_));
}

template <class Self, class Number, class Unit>
QOB::Object Quantity<Self, Number, Unit>::toQOBObject() const {
    return toQOBValueObject();
}

// Generic access -------------------------------------------------------------------------------

/// The value of type `Member` in an object. The conversion comes first, so that a value of another
/// type raises bad_any_cast.
template <class Self, class Member>
Member memberFromObject(QOB::ImmutableObject const& object, void (*fail)(char const*)) {
    QOB::ImmutableValueObject const value(object);
    Member const member = value.get() != nullptr ? QOB::unboxValue<Member>(*value.get()) : Member();
    if (value.get() == nullptr || !object.isValid()) {
        fail(InternalFailure);
    }
    return member;
}

template <class Self, class Number, class Unit>
QOB::Object Quantity<Self, Number, Unit>::getValueAsImmutableObject() const {
    return value_;
}

template <class Self, class Number, class Unit>
QOB::Object Quantity<Self, Number, Unit>::getUnitAsImmutableObject() const {
    return unit_;
}

template <class Self, class Number, class Unit>
void Quantity<Self, Number, Unit>::setOrAddObjectValue(QOB::Object const& object) {
    setValue(memberFromObject<Self, Number>(object, &Self::fail));
}

template <class Self, class Number, class Unit>
void Quantity<Self, Number, Unit>::setOrAddObjectUnit(QOB::Object const& object) {
    setUnit(memberFromObject<Self, Unit>(object, &Self::fail));
}

template <class Self, class Number, class Unit>
void Quantity<Self, Number, Unit>::removeObjectValue(QOB::ImmutableObject const& object) {
    static_cast<void>(memberFromObject<Self, Number>(object, &Self::fail));
}

template <class Self, class Number, class Unit>
void Quantity<Self, Number, Unit>::removeObjectUnit(QOB::ImmutableObject const& object) {
    static_cast<void>(memberFromObject<Self, Unit>(object, &Self::fail));
}

// Text -----------------------------------------------------------------------------------------

template <class Self, class Number, class Unit>
std::wstring Quantity<Self, Number, Unit>::toUString() const {
    std::vector<std::wstring> parts;
    parts.reserve(2);
    parts.emplace_back(value_.isValid() ? value_.toString() : QOB::String(""));
    parts.emplace_back(unit_.toString());
    try {
        return QOB::Serializer::DatatypeStringRepresenter().combineStrings(parts);
    } catch (std::exception const&) {
        Self::fail("Failed to convert type to string");
    }
}

template <class Self, class Number, class Unit>
Self Quantity<Self, Number, Unit>::fromUString(std::wstring const& text) {
    std::vector<std::wstring> parts;
    try {
        parts = QOB::Serializer::DatatypeStringRepresenter().splitString(text);
    } catch (std::exception const&) {
        Self::fail("Failed to convert string to type!");
    }
    if (parts.size() > 2) {
        Self::fail("Incorrect parameters count!");
    }
    parts.resize(2);
    Self quantity;
    quantity.setValue(Number::fromString(parts[0]));
    Tessel::ErrorHolder errors;
    Tessel::any const unit = Unit::getTypeInfo().convertFromString(QOB::String(parts[1]), errors);
    if (errors.hasError()) {
        QOB_FAIL("%s", errors.getError().c_str());
    }
    quantity.setUnit(Tessel::any_cast<Unit const&>(unit));
    return quantity;
}

template <class Self, class Number, class Unit>
QOB::String Quantity<Self, Number, Unit>::toString() const {
    return toUString();
}

template <class Self, class Number, class Unit>
Self Quantity<Self, Number, Unit>::fromString(QOB::String const& text) {
    return fromUString(text);
}

// The description ------------------------------------------------------------------------------

template <class Self, class Value>
Tessel::any QuantityTypeInfo<Self, Value>::convertFromUString(std::wstring const& text,
                                                              Tessel::ErrorHolder& errors) const {
    if (errors.hasError()) {
        Value::fail(InternalFailure);
    }
    return Value::fromUString(text);
}

template <class Self, class Value>
std::wstring QuantityTypeInfo<Self, Value>::convertToUString(Tessel::any const& value) const {
    return Tessel::any_cast<Value const&>(value).toUString();
}

template <class Self, class Value>
Tessel::any QuantityTypeInfo<Self, Value>::convertFromString(std::string const& text,
                                                             Tessel::ErrorHolder& errors) const {
    return this->convertFromUString(QOB::String(text), errors);
}

template <class Self, class Value>
std::string QuantityTypeInfo<Self, Value>::convertToString(Tessel::any const& value) const {
    return QOB::String(this->convertToUString(value));
}

template <class Self, class Value>
Tessel::any QuantityTypeInfo<Self, Value>::defaultConstruct() const {
    return Value();
}

template <class Self, class Value>
Tessel::Type* QuantityTypeInfo<Self, Value>::clone() const {
    return new Self();
}

} // namespace Zorvane::metamodel::types
