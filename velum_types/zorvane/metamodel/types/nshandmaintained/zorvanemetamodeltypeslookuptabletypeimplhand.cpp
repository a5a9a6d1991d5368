#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesaxis.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypeslookuptabletype.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypessharedaxistype.h"

#include <string>

namespace Zorvane::metamodel::types::NSInterface {

namespace {

QOB::Sequence<Axis> axesOf(LookupTableTypeIntf const* table, QOB::Deviant deviant) {
    return const_cast<LookupTableTypeIntf*>(table)->getAxeses(deviant);
}

/// A shared axis counts with its shared definition.
int elementsAlong(Axis const& axis) {
    return axis.hasSharedAxis() ? axis.getSharedAxis().getAxis().getDimensions()
                                : axis.getDimensions();
}

} // namespace

QOB::String LookupTableTypeIntf::getCategory(QOB::Deviant deviant) const {
    int const axes = axesOf(this, deviant).size();
    switch (axes) {
    case 1:
        return "CURVE";
    case 2:
        return "MAP";
    case 3:
        return "CUBOID";
    default:
        std::string category = "CUBE_";
        category += std::to_string(axes);
        return category;
    }
}

// The number of elements: a product of 32 bits that wraps, also over an axis without a number.
QOB::Integer LookupTableTypeIntf::getDimensions(QOB::Deviant deviant) const {
    unsigned product = 1;
    for (Axis const& axis : axesOf(this, deviant)) {
        product *= static_cast<unsigned>(elementsAlong(axis));
    }
    return QOB::Integer(static_cast<int>(product));
}

} // namespace Zorvane::metamodel::types::NSInterface
