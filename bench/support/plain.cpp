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

} // namespace plain
