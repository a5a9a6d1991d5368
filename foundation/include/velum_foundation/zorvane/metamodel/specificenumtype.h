#pragma once

#include "tessel/any.h"
#include "tessel/enumtype.h"

#include <string>
#include <typeinfo>

namespace Zorvane::metamodel {

/// The run-time description of the enumerated value class T, with T's literals.
template <class T>
class SpecificEnumType : public Tessel::EnumType {
public:
    SpecificEnumType() : EnumType(T::getTypeName()) {
        for (auto const& [kind, literal] : T::getLiterals()) {
            addLiteral(kind(), literal);
        }
    }

    bool isValid(Tessel::any const& value) const override {
        return !value.empty() && value.content()->referredValue() == nullptr &&
               value.type() == typeid(T);
    }
    Tessel::Type* clone() const override { return new SpecificEnumType(*this); }
    int toInteger(Tessel::any const& value) const override {
        return Tessel::any_cast<T const&>(value)();
    }
    Tessel::any fromInteger(int number) const override { return T(number); }
};

} // namespace Zorvane::metamodel
