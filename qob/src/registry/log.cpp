#include "qob/qob/log.h"

#include "qob/qob/hostexception.h"

#include <array>
#include <cstdarg>
#include <utility>

namespace QOB {

namespace {
LogSink debugSink = nullptr;
} // namespace

LogSink setDebugLogSink(LogSink sink) noexcept {
    return std::exchange(debugSink, sink);
}

} // namespace QOB

void qobLogDebug(char const* format, ...) {
    QOB::LogSink const sink = QOB::debugSink;
    if (sink == nullptr) {
        return;
    }
    constexpr std::size_t limit = 1024;
    std::array<char, limit> line{};
    std::va_list arguments;
    va_start(arguments, format);
    int const written = host::formatBounded(line.data(), line.size(), format, arguments);
    va_end(arguments);
    if (written >= 0) {
        sink(line.data());
    }
}
