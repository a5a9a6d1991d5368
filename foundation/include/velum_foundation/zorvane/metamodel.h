#pragma once

#include "qob/qob/package.h"
#include "velum_foundation/export.h"

namespace Zorvane::NSImplementation {

/// The package of the whole product's metamodel, "Zorvane", seen in the deviant of `model`, which
/// is the meta-registry. It is made at the first need, in a transaction; should that have been
/// rolled back, it is made anew. Raises QOB::Exception if the meta-registry can't be written then.
VELUM_FOUNDATION_EXPORT QOB::Package staticGetZorvaneMetaModel(QOB::Model model);

} // namespace Zorvane::NSImplementation

namespace Zorvane::metamodel::NSImplementation {

/// The pointer to the package "metamodel" within it, in which the packages of all domains lie. Made
/// together with the product's package and with the package of the base metamodel, "foundation",
/// and its classes; lives as long as this library.
VELUM_FOUNDATION_EXPORT QOB::NSInterface::PackageIntf*& staticGetMetamodelMetaPackage();

} // namespace Zorvane::metamodel::NSImplementation
