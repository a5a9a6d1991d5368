// Units of one dimension, and a computation method between stored and physical values.
#include <iostream>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;

namespace {

types::Unit
unit(types::Unit const& base, char const* name, char const* symbol, double factor, double offset) {
    auto result = types::Unit::create(base.getModelQOB(), name);
    result.setSymbol(symbol);
    result.setConvUnit(base);
    result.setConvFactor(factor);
    result.setConvOffset(offset);
    result.setDimension(base.getDimension());
    return result;
}

} // namespace

int main() {
    types::initialize();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();

    auto const temperature = types::Dimension::create(model, "temperature");
    auto const kelvin = types::Unit::create(model, "kelvin");
    kelvin.setSymbol("K");
    temperature.setBaseUnit(kelvin); // and kelvin is one of its units
    auto const celsius = unit(kelvin, "degree Celsius", "degC", 1, 273.15);
    unit(kelvin, "degree Fahrenheit", "degF", 5.0 / 9, 459.67 * 5 / 9);

    std::cout << "100 of each " << temperature.getName() << ":\n";
    for (types::Unit const& each : temperature.getUnits()) {
        std::cout << "  " << each.getSymbol() << " = "
                  << each.getConvOffset() + each.getConvFactor() * 100 << " "
                  << temperature.getBaseUnit().getSymbol() << "\n";
    }

    auto const method = types::CompuMethod::create(model, "%5.1f", "CoolantTemperature");
    method.setCategory(types::CompuMethodCategory::Linear);
    method.setUnit(celsius);
    auto const type = types::Integer::create(model, "uint8");
    type.setCompuMethod(method); // and the method lists the type
    std::cout << method.getName() << " (" << method.getCategory().toString() << ", "
              << method.getUnit().getSymbol() << ") serves "
              << method.getPrimitiveTypes().front().getName() << "\n";

    try {
        QOB::Real value = 20;
        celsius.convert(value, kelvin);
    } catch (QOB::UnImplementedException const&) {
        std::cout << "The library holds factors and offsets; it does not convert.\n";
    }
}
