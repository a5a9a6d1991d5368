#pragma once

#include "qob/qob/export.h"

namespace QOB {

/// Receives one formatted line of the debug log, without a line break.
using LogSink = void (*)(char const* line);

/// Installs a sink and returns the previous one; null turns the log off, which is the default.
QOB_EXPORT LogSink setDebugLogSink(LogSink sink) noexcept;

} // namespace QOB

/// Writes a printf-style line to the debug log. Formats nothing if there is no sink.
QOB_EXPORT void qobLogDebug(char const* format, ...);
