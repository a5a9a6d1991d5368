// Numeric types and their bounds: what a signal of a control unit can hold.
#include <iostream>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;

namespace {

types::DataSize bits(int count) {
    return {count, types::DataSizeUnitKind::bit};
}

/// A type has the bounds that it was given; its width implies none.
void printBounds(types::Real const& type) {
    std::cout << type.getName() << ": ";
    if (!type.hasMinValue() && !type.hasMaxValue()) {
        std::cout << "unbounded\n";
        return;
    }
    bool const open = type.isMaxOpen() == QOB::Boolean(true);
    std::cout << "from " << type.getMinValue() << (open ? " to below " : " to ")
              << type.getMaxValue() << "\n";
}

} // namespace

int main() {
    types::initialize();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();

    auto const speed = types::Integer::create(model, "EngineSpeed");
    speed.setLength(bits(16));
    speed.setIsSigned(false);
    speed.setMinValue(0);
    speed.setMaxValue(8000);
    speed.setIsMaxOpen(false);
    printBounds(speed);

    auto const angle =
        types::FloatingPoint::create(model, types::FloatingPointKind::IEEE_Single, "CrankAngle");
    angle.setMinValue(0);
    angle.setMaxValue(720);
    printBounds(angle);
    angle.removeMinValue();
    angle.removeMaxValue();
    printBounds(angle);

    printBounds(types::Boolean::create(model, "IgnitionOn"));

    // The fraction length is the exponent of the slope as it stands: -3 makes steps of an eighth.
    auto const temperature = types::FixedPoint::create(model, "CoolantTemperature");
    temperature.setFractionLength(bits(-3));
    temperature.setBias(-40);
    double const stored = 1000;
    std::cout << temperature.getName() << ": " << stored << " stored means "
              << temperature.getBias() + temperature.getSlope() * stored << "\n";
}
