#pragma once

#include "qob/kernel/value/valuebox.h"

namespace Park::zoo {

class Food {
public:
    enum Value { seeds, fish };

    constexpr Food(Value value = seeds) noexcept : value_(value) {}
    explicit Food(QOB::Object const& box) {
        value_ =
            QOB::unboxValue<Food>(*QOB::castObject<QOB::NSInterface::ValueObjectIntf>(box.get()));
    }

    operator QOB::Object() const { return QOB::boxValue<QOB::Object>(*this); }
    constexpr operator Value() const noexcept { return value_; }
    QOB::String toString() const { return value_ == seeds ? "seeds" : "fish"; }
    static std::string getTypeName() { return "Park.zoo.Food"; }

private:
    Value value_ = seeds;
};

} // namespace Park::zoo
