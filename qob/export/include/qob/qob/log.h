#pragma once

#include "qob/qob/export.h"

namespace QOB {

/// What receives the debug log: a formatted line without its end.
using LogSink = void (*)(char const* line);

/// Installs a sink, or none by null; returns the one before. Without one the log is silent.
QOB_EXPORT LogSink setDebugLogSink(LogSink sink) noexcept;

} // namespace QOB

/// Writes a printf-style line to the debug log. Formats nothing if there is no sink.
QOB_EXPORT void qobLogDebug(char const* format, ...);
