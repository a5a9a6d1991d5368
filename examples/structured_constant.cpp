// A constant of a structured type: a tree of values, one slot for each element of the structure.
#include <iostream>
#include <string>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

void print(foundation::ValueSpecification const& value) {
    if (types::LiteralReal const literal(value); literal.isValid()) {
        std::cout << literal.getValue();
    } else if (types::EnumerationLiteralReference const link(value); link.isValid()) {
        std::cout << link.getValue().getName();
    } else if (types::ConstantReference const constant(value); constant.isValid()) {
        std::cout << "-> " << constant.getValue().getName();
    } else if (types::StructureValueSpecification const parts(value); parts.isValid()) {
        std::string separator = "{";
        for (types::Slot const& slot : parts.getOwnedSlots()) {
            std::cout << separator << slot.getStructElement().getName() << ": ";
            print(slot.getValue());
            separator = ", ";
        }
        std::cout << "}";
    }
}

void print(types::ConstantSpecification const& constant) {
    std::cout << constant.getName() << " = ";
    print(constant.getConstantValue());
    std::cout << "\n";
}

} // namespace

int main() {
    types::initialize();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();

    // The type.
    auto const mode = types::Enumeration::create(model, "Mode");
    auto const automatic = types::EnumerationLiteral::create(model, 1, 1, mode, "Automatic");
    auto const controller = types::Structure::create(model, "Controller");
    auto const gain = types::StructElement::create(model, controller, "gain");
    auto const modeElement = types::StructElement::create(model, controller, "mode");
    auto const limit = types::StructElement::create(model, controller, "limit");

    // A constant of its own, for others to refer to.
    auto const maximum = types::ConstantSpecification::create(
        model, types::LiteralReal::create(model, 120.5, ""), "MaximumTorque");
    print(maximum);

    // The constant: it owns the value, which owns its slots, each of which owns its value.
    auto const value = types::StructureValueSpecification::create(model, "");
    auto const link = types::EnumerationLiteralReference::create(model);
    link.setValue(automatic);
    types::Slot::create(model, value, types::LiteralReal::create(model, 0.75, ""), "")
        .setStructElement(gain);
    types::Slot::create(model, value, link, "").setStructElement(modeElement);
    types::Slot::create(model, value, types::ConstantReference::create(model, maximum, ""), "")
        .setStructElement(limit);
    auto const constant = types::ConstantSpecification::create(model, value, "DefaultController");
    print(constant);

    // A slot refers to its element: a new name shows everywhere.
    limit.setName("maximum");
    types::LiteralReal(value.getOwnedSlots().front().getValue()).setValue(0.5);
    print(constant);
}
