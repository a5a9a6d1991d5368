#include "support/plaintypes.h"

#include <algorithm>

namespace plain {

Type::~Type() = default;

bool Type::isSigned() const {
    return state.isSigned;
}

void Type::setSigned(bool value) {
    state.isSigned = value;
}

TypeHandle makeType(std::string name) {
    TypeHandle type(new Type());
    type->state.name = std::move(name);
    return type;
}

void setMethod(TypeHandle const& type, Method* method) {
    if (Method* const old = type->state.method; old != nullptr) {
        old->types.erase(std::ranges::find(old->types, type.get()));
    }
    type->state.method = method;
    method->types.push_back(type.get());
}

void Journal::save(TypeHandle const& type) {
    if (known_.try_emplace(type.get(), saved_.size()).second) {
        saved_.emplace_back(type, std::make_unique<TypeState>(type->state));
    }
}

void Journal::exchange() {
    for (auto& [type, state] : saved_) {
        std::swap(type->state, *state);
    }
}

TypeState& TypeBranch::stateOf(TypeHandle const& type) {
    std::unique_ptr<TypeState>& state = states_[type.get()];
    if (state == nullptr) {
        state = std::make_unique<TypeState>(type->state);
    }
    return *state;
}

} // namespace plain
