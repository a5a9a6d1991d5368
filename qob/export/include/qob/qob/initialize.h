#pragma once

#include "qob/qob/export.h"

namespace QOB {

/// Brings the kernel up; once per process, further calls do nothing. Returns true.
QOB_EXPORT bool initialize();

/// Ends every model that is left but the meta-registry. For a library whose classes may be in use
/// in models, before its own code and tables go.
QOB_EXPORT void endModels() noexcept;

/// The last thing that a library does when it goes, so that its code can be unloaded. Objects and
/// values of its classes that handles still hold give way to empty ones: handles on them can be
/// copied, compared and dropped, and are valid nowhere; every access by an operation of the
/// kernel's classes raises. What the meta-registry kept of the library's tables for a rollback or
/// an undo is forgotten. `inside` is any address in the library. Drop sequences and iterators on
/// its objects before.
QOB_EXPORT void leaveLibrary(void const* inside) noexcept;

} // namespace QOB
