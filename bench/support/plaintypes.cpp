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
void Type::setName(std::string const& value) {
    state.name = value;
}
void Type::setVisibility(int value) {
    state.visibility = value;
}
void Type::setLength(int value, int unit) {
    state.length = value;
    state.lengthUnit = unit;
}
void Type::setMinimum(double value) {
    state.minimum = value;
}
void Type::setMaximum(double value) {
    state.maximum = value;
}
void Type::setMinimumOpen(bool value) {
    state.isMinimumOpen = value;
}
void Type::setMaximumOpen(bool value) {
    state.isMaximumOpen = value;
}
void Type::setApplication(bool value) {
    state.isApplication = value;
}

std::any Type::get(unsigned id) const {
    switch (id) {
    case 1:
        return state.name;
    case 2:
        return state.visibility;
    case 3:
        return state.length;
    case 4:
        return state.lengthUnit;
    case 5:
        return state.minimum;
    case 6:
        return state.maximum;
    case 7:
        return state.isSigned;
    case 8:
        return state.isMinimumOpen;
    case 9:
        return state.isMaximumOpen;
    case 10:
        return state.isApplication;
    default:
        return {};
    }
}

void Type::set(unsigned id, std::any const& value) {
    switch (id) {
    case 1:
        state.name = std::any_cast<std::string const&>(value);
        break;
    case 2:
        state.visibility = std::any_cast<int>(value);
        break;
    case 3:
        state.length = std::any_cast<int>(value);
        break;
    case 4:
        state.lengthUnit = std::any_cast<int>(value);
        break;
    case 5:
        state.minimum = std::any_cast<double>(value);
        break;
    case 6:
        state.maximum = std::any_cast<double>(value);
        break;
    case 7:
        state.isSigned = std::any_cast<bool>(value);
        break;
    case 8:
        state.isMinimumOpen = std::any_cast<bool>(value);
        break;
    case 9:
        state.isMaximumOpen = std::any_cast<bool>(value);
        break;
    case 10:
        state.isApplication = std::any_cast<bool>(value);
        break;
    default:
        break;
    }
}

unsigned Type::idOf(std::string_view name) {
    static std::unordered_map<std::string_view, unsigned> const ids{{"Name", 1},
                                                                    {"Visibility", 2},
                                                                    {"Length", 3},
                                                                    {"LengthUnit", 4},
                                                                    {"minValue", 5},
                                                                    {"maxValue", 6},
                                                                    {"IsSigned", 7},
                                                                    {"isMinOpen", 8},
                                                                    {"isMaxOpen", 9},
                                                                    {"IsApplication", 10}};
    auto const found = ids.find(name);
    return found != ids.end() ? found->second : 0;
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
