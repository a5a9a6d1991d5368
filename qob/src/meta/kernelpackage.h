#pragma once

#include "qob/qob/introspection.h"

namespace QOB {

class Factory;

namespace internal {

/// The table of the kernel's package, and the list of supers of a class right below ClassObject.
extern PackageIntrospectiveMethods kernelPackage;
extern SuperReference const belowClassObject[2];

/// Makes the package "QOB" with the classes and data types that metamodels refer to.
void createKernelPackage(Factory const& factory);
/// Clears the pointers to them, before their model ends.
void forgetKernelPackage() noexcept;

} // namespace internal
} // namespace QOB
