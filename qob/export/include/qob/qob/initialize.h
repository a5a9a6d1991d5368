#pragma once

#include "qob/qob/export.h"

namespace QOB {

/// Starts the kernel once per process; further calls do nothing. Returns true.
QOB_EXPORT bool initialize();

/// Ends every remaining model except the meta-registry. A library whose classes models may use
/// calls this before its code and tables are unloaded.
QOB_EXPORT void endModels() noexcept;

/// The last call that a library makes before its code is unloaded. Objects and values of its
/// classes that handles still refer to are replaced by empty ones: such handles can be copied,
/// compared and dropped, but are not valid in any deviant, and every access raises. The
/// meta-registry forgets what it kept of the library's tables for a rollback or an undo. `inside`
/// is any address in the library. Drop sequences and iterators on its objects first.
QOB_EXPORT void leaveLibrary(void const* inside) noexcept;

} // namespace QOB
