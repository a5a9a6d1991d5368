#pragma once

#include "tessel/moduleobject.h"

namespace QOB::internal {

/// What this library made for the length of its life; deleted when it goes, after the models that
/// are left have ended.
Tessel::ModuleObjectDeleter& moduleObjects();

/// Frees the memory that is kept for boxes.
void releaseSpareBoxes() noexcept;

} // namespace QOB::internal
