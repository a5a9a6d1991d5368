#pragma once

#include "qob/qob/factory.h"
#include "velum_types/export.h"

/// The package "types" as live elements in the meta-registry: its making and its end. Everything
/// here is to be called inside a transaction on the meta-registry. The pointers are null until the
/// elements exist and again after they were destroyed; the meta-registry owns the elements.
namespace Zorvane::metamodel::types::NSImplementation {

/// Makes the package with its data types if there is none yet. Returns staticGetTypesMetaPackage.
VELUM_TYPES_EXPORT QOB::NSInterface::PackageIntf*& staticInitializeTypesMeta();
/// Destroys the package, if it exists, with all it contains.
VELUM_TYPES_EXPORT void staticTerminateTypesMeta();

/// Makes the package within `parent`, or directly in the meta-registry if that is empty, and its
/// data types. Nothing happens if the package exists.
VELUM_TYPES_EXPORT void staticCreateTypesMetaPackage(QOB::Factory factory, QOB::Package parent);
/// Destroys the package as seen in the deviant of `package`. Nothing happens if there is none.
VELUM_TYPES_EXPORT void staticDestroyTypesMetaPackage(QOB::Factory factory, QOB::Package package);

VELUM_TYPES_EXPORT QOB::NSInterface::PackageIntf*& staticGetTypesMetaPackage();
/// The package in the deviant of `model`; empty before it is made.
VELUM_TYPES_EXPORT QOB::Package staticGetTypesMetaModel(QOB::Model model);

/// The elements that describe the value classes.
VELUM_TYPES_EXPORT QOB::NSInterface::DataTypeIntf*& staticGetDataSizeMeta();
VELUM_TYPES_EXPORT QOB::NSInterface::DataTypeIntf*& staticGetTimeMeta();
VELUM_TYPES_EXPORT QOB::NSInterface::EnumerationIntf*& staticGetFloatingPointKindMeta();
VELUM_TYPES_EXPORT QOB::NSInterface::EnumerationIntf*& staticGetDataSizeUnitKindMeta();
VELUM_TYPES_EXPORT QOB::NSInterface::EnumerationIntf*& staticGetTimeUnitKindMeta();
VELUM_TYPES_EXPORT QOB::NSInterface::EnumerationIntf*& staticGetCompuMethodCategoryMeta();

} // namespace Zorvane::metamodel::types::NSImplementation
