#pragma once

#include "qob/qob/package.h"
#include "velum_foundation/export.h"

namespace Zorvane::NSImplementation {

/// The package "Zorvane", which contains every metamodel of the product. It is seen in the deviant
/// of `model`, which must be the meta-registry. Created on first use, in a transaction, and created
/// again if that transaction was rolled back. Raises QOB::Exception if the meta-registry can't be
/// written.
VELUM_FOUNDATION_EXPORT QOB::Package staticGetZorvaneMetaModel(QOB::Model model);

} // namespace Zorvane::NSImplementation

namespace Zorvane::metamodel::NSImplementation {

/// The pointer to the package "metamodel" inside "Zorvane", which contains the packages of all
/// domains. Created together with "Zorvane" and with the base metamodel's package "foundation" and
/// its classes. Valid as long as this library is loaded.
VELUM_FOUNDATION_EXPORT QOB::NSInterface::PackageIntf*& staticGetMetamodelMetaPackage();

} // namespace Zorvane::metamodel::NSImplementation
