#pragma once

#include "qob/kernel/value/valuebox.h"
#include "qob/qob/assert.h"
#include "qob/qob/serializer/datatypestringrepresenter.h"
#include "qob/qob/typeinforegistry.h"
#include "velum_foundation/zorvane/metamodel/valuefailure.h"
#include "velum_types/zorvane/metamodel/types/quantity.h"
#include "velum_types/zorvane/metamodel/types/quantitytypeinfo.h"

#include <exception>
#include <ostream>
#include <utility>
#include <vector>

/// The bodies of Quantity and QuantityTypeInfo. Include this only in the one source file that
/// instantiates them for a class.
namespace Zorvane::metamodel::types {

/// The value in an object; raises by `fail` for one that is null or holds no value.
template <class Value>
Value valueOf(QOB::NSInterface::ObjectIntf const* object, void (*fail)(char const*)) {
    auto const* const value = QOB::valueObject(object);
    if (value == nullptr) {
        fail(InternalFailure);
    }
    return QOB::unboxValue<Value>(*value);
}

template <class Self, class Number, class Unit>
Quantity<Self, Number, Unit>::Quantity(QOB::ImmutableValueObject const& object)
    : Quantity(valueOf<Self>(object.get(), &Self::fail)) {
}

template <class Self, class Number, class Unit>
Quantity<Self, Number, Unit>::Quantity(QOB::ValueObject const& object)
    : Quantity(valueOf<Self>(object.get(), &Self::fail)) {
}

template <class Self, class Number, class Unit>
Quantity<Self, Number, Unit>::Quantity(QOB::ImmutableObject const& object)
    : Quantity(valueOf<Self>(object.get(), &Self::fail)) {
}

template <class Self, class Number, class Unit>
Quantity<Self, Number, Unit>::Quantity(QOB::Object const& object)
    : Quantity(valueOf<Self>(object.get(), &Self::fail)) {
}

template <class Self, class Number, class Unit>
QOB::ValueObject Quantity<Self, Number, Unit>::toQOBValueObject() const {
    return QOB::boxValue(Self(value_, unit_));
}

template <class Self, class Number, class Unit>
QOB::Object Quantity<Self, Number, Unit>::toQOBObject() const {
    return QOB::boxValue<QOB::Object>(Self(value_, unit_));
}

// Generic access -------------------------------------------------------------------------------

/// The value of type `Member` in an object, as a setter takes it. The conversion comes first, so
/// that a value of another type raises bad_any_cast.
template <class Member>
Member validMember(QOB::ImmutableObject const& object, void (*fail)(char const*)) {
    Member const member = valueOf<Member>(object.get(), fail);
    if (!object.isValid()) {
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
    setValue(validMember<Number>(object, &Self::fail));
}

template <class Self, class Number, class Unit>
void Quantity<Self, Number, Unit>::setOrAddObjectUnit(QOB::Object const& object) {
    setUnit(validMember<Unit>(object, &Self::fail));
}

template <class Self, class Number, class Unit>
void Quantity<Self, Number, Unit>::removeObjectValue(QOB::ImmutableObject const& object) {
    static_cast<void>(validMember<Number>(object, &Self::fail));
}

template <class Self, class Number, class Unit>
void Quantity<Self, Number, Unit>::removeObjectUnit(QOB::ImmutableObject const& object) {
    static_cast<void>(validMember<Unit>(object, &Self::fail));
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
    return fromParts(parts[0], QOB::String(parts[1]).view());
}

template <class Self, class Number, class Unit>
Self Quantity<Self, Number, Unit>::fromParts(QOB::String const& value, std::string_view unit) {
    Number const number = Number::fromString(value);
    if (std::optional<Unit> const known = Unit::findLiteral(unit)) {
        return {number, *known};
    }
    Tessel::ErrorHolder errors;
    Tessel::any const other = Unit::getTypeInfo().convertFromString(std::string(unit), errors);
    if (errors.hasError()) {
        Self::fail(errors.getError().c_str());
    }
    return {number, Tessel::any_cast<Unit const&>(other)};
}

template <class Self, class Number, class Unit>
QOB::String Quantity<Self, Number, Unit>::toString() const {
    if (unit_.literal().empty()) {
        return toUString();
    }
    QOB::String const number = value_.isValid() ? value_.toString() : QOB::String();
    return QOB::Serializer::DatatypeStringRepresenter::combinePlainPair(number.view(),
                                                                        unit_.literal());
}

template <class Self, class Number, class Unit>
Self Quantity<Self, Number, Unit>::fromString(QOB::String const& text) {
    std::string_view number;
    std::string_view unit;
    if (QOB::Serializer::DatatypeStringRepresenter::splitPlainPair(text.view(), number, unit)) {
        return fromParts(std::string(number), unit);
    }
    return fromUString(text);
}

template <class Self, class Number, class Unit>
QOB::ImmutableDataType Quantity<Self, Number, Unit>::MetaDataType() {
    return QOB::TypeInfoRegistry::getMetaType(Self::getTypeName());
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
