// An enumeration, its literals, and a second view of the model in which it looks different.
#include <iostream>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;

namespace {

void print(types::Enumeration const& enumeration) {
    std::cout << enumeration.getName() << ":";
    for (types::EnumerationLiteral const& literal : enumeration.getOwnedLiterals()) {
        std::cout << " " << literal.getName() << "=" << literal.getValue();
    }
    std::cout << ", starts as " << enumeration.getGroundValue() << "\n";
}

} // namespace

int main() {
    types::initialize();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();

    auto const gear = types::Enumeration::create(model, "Gear");
    gear.setLength({8, types::DataSizeUnitKind::bit});
    int number = 10;
    for (char const* const name : {"Park", "Reverse", "Neutral", "Drive"}) {
        auto const literal = types::EnumerationLiteral::create(model);
        literal.setName(name);
        literal.setValue(number++); // nobody else gives it one
        gear.getOwnedLiterals().push_back(literal);
    }
    print(gear);

    // What is written in a branch is seen there, and everywhere once it is merged.
    QOB::Deviant const branch = model.createDeviant();
    types::Enumeration const draft(gear.get(), branch);
    draft.setDefaultValue(12);
    draft.getOwnedLiterals().back().setName("Forward");
    draft.getOwnedLiterals().erase(1);
    print(draft);
    print(gear);
    model.mergeDeviant(branch);
    print(gear);
}
