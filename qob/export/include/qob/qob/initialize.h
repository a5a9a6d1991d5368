#pragma once

#include "qob/qob/export.h"

namespace QOB {

/// Brings the kernel up; once per process, further calls do nothing. Returns true.
QOB_EXPORT bool initialize();

/// Ends every model that is left but the meta-registry. For a library whose classes may be in use
/// in models, before its own code and tables go.
QOB_EXPORT void endModels() noexcept;

} // namespace QOB
