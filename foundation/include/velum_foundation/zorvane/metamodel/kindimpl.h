#pragma once

#include "qob/kernel/value/valuebox.h"
#include "qob/qob/assert.h"
#include "qob/qob/typeinforegistry.h"
#include "velum_foundation/zorvane/metamodel/kind.h"
#include "velum_foundation/zorvane/metamodel/specificenumtype.h"
#include "velum_foundation/zorvane/metamodel/valuefailure.h"

#include <algorithm>
#include <ostream>

/// The bodies of Kind. Include this only in the one source file that instantiates it for a class.
namespace Zorvane::metamodel {

template <class Self, class Literals>
Kind<Self, Literals>::Kind(QOB::ImmutableValueObject const& object) {
    if (object.get() != nullptr) {
        number_ = QOB::unboxValue<Self>(*object.get()).number_;
    }
}

template <class Self, class Literals>
Kind<Self, Literals>::Kind(QOB::ValueObject const& object)
    : Kind(static_cast<QOB::ImmutableValueObject const&>(object)) {
}

template <class Self, class Literals>
Kind<Self, Literals>::Kind(QOB::ImmutableObject const& object) {
    if (!object.isValid()) {
        return;
    }
    auto const* const value = QOB::valueObject(object.get());
    if (value == nullptr) {
        Literals::fail(InternalFailure);
    }
    number_ = QOB::unboxValue<Self>(*value).number_;
}

template <class Self, class Literals>
Kind<Self, Literals>::Kind(QOB::Object const& object)
    : Kind(static_cast<QOB::ImmutableObject const&>(object)) {
}

template <class Self, class Literals>
Kind<Self, Literals>::operator QOB::ValueObject() const {
    return QOB::boxValue(Self(number_));
}

template <class Self, class Literals>
Kind<Self, Literals>::operator QOB::Object() const {
    return QOB::boxValue<QOB::Object>(Self(number_));
}

template <class Self, class Literals>
QOB::String Kind<Self, Literals>::toString() const {
    std::string_view const text = literal();
    return text.empty() ? QOB::String(std::to_string(number_)) : QOB::String(std::string(text));
}

template <class Self, class Literals>
Self Kind<Self, Literals>::fromString(std::string const& text) {
    if (std::optional<Self> const known = findLiteral(text)) {
        return *known;
    }
    return Tessel::any_cast<Self>(getTypeInfo().convertFromString(text));
}

template <class Self, class Literals>
std::map<Self, std::string> Kind<Self, Literals>::getLiterals() {
    static std::map<Self, std::string> const literals = [] {
        std::map<Self, std::string> all;
        for (int number = 0; std::string_view const text : Literals::texts) {
            all.emplace(number++, text);
        }
        return all;
    }();
    return literals;
}

template <class Self, class Literals>
std::string Kind<Self, Literals>::getTypeName() {
    return Literals::typeName;
}

template <class Self, class Literals>
Tessel::TypeInfo const& Kind<Self, Literals>::getTypeInfo() {
    static Tessel::TypeInfo const info = Tessel::Type::CreateTypeInfo(new SpecificEnumType<Self>());
    return info;
}

template <class Self, class Literals>
QOB::ImmutableDataType Kind<Self, Literals>::MetaDataType() {
    return QOB::TypeInfoRegistry::getMetaType(Self::getTypeName());
}

} // namespace Zorvane::metamodel
