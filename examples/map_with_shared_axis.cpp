// A calibration map whose first axis is defined once and used by two tables.
#include <iostream>
#include <velum_types/types.h>

namespace types = Zorvane::metamodel::types;

namespace {

void print(types::LookupTableType const& table) {
    std::cout << table.getName() << ": " << table.getCategory() << " of " << table.getDimensions()
              << " values\n";
}

} // namespace

int main() {
    types::initialize();
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    auto const layout = types::SwRecordLayout::create(model, "RowByRow");

    auto const speeds = types::SharedAxisType::create(
        model, layout, types::Axis::create(model, 16, "points"), "EngineSpeeds");

    // Each table owns the type of its values and its axes.
    auto const ignition = types::LookupTableType::create(
        model, layout, types::FixedPoint::create(model, "angle"), "IgnitionAngle");
    auto const speedOfIgnition = types::Axis::create(model, 0, "speed");
    speedOfIgnition.setSharedAxis(speeds);
    ignition.getAxeses().push_back(speedOfIgnition);
    ignition.getAxeses().push_back(types::Axis::create(model, 12, "load"));

    auto const limit = types::LookupTableType::create(
        model, layout, types::FixedPoint::create(model, "torque"), "TorqueLimit");
    auto const speedOfLimit = types::Axis::create(model, 0, "speed");
    limit.getAxeses().push_back(speedOfLimit);
    speeds.getSharedFroms().push_back(speedOfLimit); // the other end of setSharedAxis

    print(ignition);
    print(limit);

    speeds.getAxis().setDimensions(20);
    print(ignition);
    print(limit);

    std::cout << speeds.getName() << " is shared by";
    for (types::Axis const& axis : speeds.getSharedFroms()) {
        std::cout << " " << types::LookupTableType(axis.getContainerQOB()).getName();
    }
    std::cout << "\n";
}
