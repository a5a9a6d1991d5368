// A structure: its elements refer to types that are defined elsewhere, or own a type of their own.
#include <iostream>
#include <string>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

void print(types::Structure const& structure, std::string const& indent) {
    for (types::StructElement const& element : structure.getElementses()) {
        bool const isInline = element.hasInlineType();
        auto const type = isInline ? foundation::Type(element.getInlineType()) : element.getType();
        std::cout << indent << element.getName() << ": ";
        // A handle of another class is empty unless the object is of that class.
        if (types::Structure const inner(type); inner.isValid()) {
            std::cout << "structure\n";
            print(inner, indent + "  ");
        } else if (types::Matrix const matrix(type); matrix.isValid()) {
            std::cout << matrix.getBaseType().getName();
            for (QOB::Integer const& size : matrix.getDimensionses()) {
                std::cout << "[" << size << "]";
            }
            std::cout << "\n";
        } else {
            std::cout << type.getName() << "\n";
        }
    }
}

} // namespace

int main() {
    types::initialize();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    auto const real =
        types::FloatingPoint::create(model, types::FloatingPointKind::IEEE_Single, "float32");

    auto const vehicle = types::Structure::create(model, "VehicleState");
    types::StructElement::create(model, vehicle, "speed").setType(real);

    auto const rotations = types::Matrix::create(model, real, "");
    rotations.getDimensionses().push_back(2);
    rotations.getDimensionses().push_back(2);
    types::StructElement::create(model, vehicle, "wheels").setInlineType(rotations);

    auto const position = types::Structure::create(model, "");
    types::StructElement::create(model, position, "latitude").setType(real);
    types::StructElement::create(model, position, "longitude").setType(real);
    types::StructElement::create(model, vehicle, "position").setInlineType(position);

    std::cout << vehicle.getName() << "\n";
    print(vehicle, "  ");

    // A structure takes along what it owns, and only that.
    vehicle.destroy();
    std::cout << "position " << (position.isValid() ? "stays" : "is gone") << ", " << real.getName()
              << (real.isValid() ? " stays" : " is gone") << "\n";
}
