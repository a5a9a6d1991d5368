#pragma once

#include "zoo/parkzoofood.h"

namespace Park::zoo {

/// An amount of food; any amount will do.
struct Portion {
    int amount = 0;
    Food food = Food::seeds;

    Portion() = default;
    Portion(int number, Food of) : amount(number), food(of) {}
    explicit Portion(QOB::Object const& box)
        : Portion(QOB::unboxValue<Portion>(
              *QOB::castObject<QOB::NSInterface::ValueObjectIntf>(box.get()))) {}

    operator QOB::Object() const { return QOB::boxValue<QOB::Object>(*this); }
    QOB::String toString() const { return QOB::Integer(amount).toString(); }
    static std::string getTypeName() { return "Park.zoo.Portion"; }

    friend bool operator==(Portion const& a, Portion const& b) noexcept {
        return a.amount == b.amount && a.food == b.food;
    }
};

} // namespace Park::zoo
