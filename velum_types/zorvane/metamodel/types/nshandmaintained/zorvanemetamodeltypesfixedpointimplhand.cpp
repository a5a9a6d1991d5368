#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfixedpoint.h"

#include <cmath>

namespace Zorvane::metamodel::types::NSInterface {

// The exponent is the fraction length as it stands, not its negative; its unit plays no part.
QOB::Real FixedPointIntf::getSlope(QOB::Deviant deviant) const {
    int const fractionLength = getFractionLength(deviant).getValue();
    double const fractionalSlope = getFractionalSlope(deviant);
    return QOB::Real(std::pow(2.0, fractionLength) * fractionalSlope);
}

} // namespace Zorvane::metamodel::types::NSInterface
