#pragma once

#include "tessel/enumtype.h"
#include "tessel/type.h"

#include <string>
#include <utility>

/// Small types as a library above would define them.
namespace Samples {

/// A value class over an integer, like the enumerated kinds.
class Unit {
public:
    Unit() = default;
    explicit Unit(int number) : number_(number) {}
    int number() const { return number_; }
    friend bool operator==(Unit const&, Unit const&) = default;

private:
    int number_ = 0;
};

class UnitType : public Tessel::EnumType {
public:
    explicit UnitType(std::string name = "Unit") : EnumType(std::move(name)) {}

    Tessel::Type* clone() const override { return new UnitType(*this); }
    int toInteger(Tessel::any const& value) const override {
        return Tessel::any_cast<Unit const&>(value).number();
    }
    Tessel::any fromInteger(int number) const override { return Unit(number); }
};

/// A type that has the narrow text forms only; everything else is inherited.
class TextType : public Tessel::Type {
public:
    explicit TextType(int* destroyed = nullptr) : destroyed_(destroyed) {}
    TextType(TextType const&) = default;
    TextType& operator=(TextType const&) = default;
    ~TextType() override {
        if (destroyed_ != nullptr) {
            ++*destroyed_;
        }
    }

    Tessel::any convertFromString(std::string const& text,
                                  Tessel::ErrorHolder& errors) const override {
        if (text == "bad") {
            errors.setError("Text (bad) is refused.");
        }
        return text;
    }
    std::string convertToString(Tessel::any const& value) const override {
        return Tessel::any_cast<std::string>(value);
    }
    Tessel::any defaultConstruct() const override { return std::string(); }
    Tessel::Type* clone() const override { return new TextType(*this); }

private:
    int* destroyed_;
};

} // namespace Samples
