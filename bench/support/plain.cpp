#include "plain.h"

namespace plain {

Object::~Object() = default;

int Object::getNumber() const {
    return state.number;
}

void Object::setNumber(int value) {
    if (state.number != value) {
        state.number = value;
    }
}

IntegerType::~IntegerType() = default;

bool IntegerType::isSigned() const {
    return isSigned_;
}

void IntegerType::setIsSigned(bool value) {
    if (isSigned_ != value) {
        isSigned_ = value;
    }
}

std::string const& IntegerType::getName() const {
    return name_;
}

void IntegerType::setName(std::string value) {
    if (name_ != value) {
        name_ = std::move(value);
    }
}

} // namespace plain
