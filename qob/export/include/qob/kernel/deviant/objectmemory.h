#pragma once

#include "qob/qob/export.h"

#include <cstddef>

/// The memory of objects and their states: cells of one size side by side in larger blocks, so that
/// a cell has no header and is taken and given back in a few instructions. A block that is empty is
/// used for another size; memory goes back to the system in pieces of several blocks. Instrumented
/// builds use the ordinary heap, which watches each cell.
namespace QOB::internal {

/// Aligned for anything that needs no more than a pointer does.
QOB_EXPORT void* allocateObject(std::size_t size);
/// Does nothing for null.
QOB_EXPORT void freeObject(void* memory) noexcept;

} // namespace QOB::internal
