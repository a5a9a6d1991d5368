#pragma once

namespace QOB::internal {

/// Makes the package "QOB": the classes of all live elements, and the value types of the kernel.
void createKernelPackage();
/// Clears the pointers to them, before their model ends.
void forgetKernelPackage() noexcept;

} // namespace QOB::internal
