#include "qob/qob/assert.h"

#include <exception>
#include <locale>
#include <sstream>

namespace QOB {

Exception::Exception(std::string const& message) : host::UserException(message) {
}
Exception::Exception(Exception const&) = default;
Exception& Exception::operator=(Exception const&) = default;
Exception::~Exception() noexcept = default;
boost::exception_detail::clone_base const* Exception::clone() const {
    return new Exception(*this);
}
void Exception::rethrow() const {
    throw Exception(*this);
}

UnImplementedException::UnImplementedException(std::string const& message) : Exception(message) {
}
UnImplementedException::UnImplementedException(UnImplementedException const&) = default;
UnImplementedException& UnImplementedException::operator=(UnImplementedException const&) = default;
UnImplementedException::~UnImplementedException() noexcept = default;
boost::exception_detail::clone_base const* UnImplementedException::clone() const {
    return new UnImplementedException(*this);
}
void UnImplementedException::rethrow() const {
    throw UnImplementedException(*this);
}

namespace {
char logBuffer[Asserter::LogBufferSize];
} // namespace

char* const Asserter::fLogBuf = logBuffer;

Asserter::~Asserter() = default;

void Asserter::format(char const* format, std::va_list arguments) {
    if (host::formatBounded(fLogBuf, LogBufferSize, format, arguments) == -1) {
        std::memset(fLogBuf, 0, LogBufferSize);
    }
}

std::string Asserter::message(char const* file, int line, char const* note) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << "Assertion failed: " << fLogBuf << " at " << file << ":" << line << ": " << note;
    return std::move(out).str();
}

void LocalFailure::operator=(Asserter const& asserter) const {
    LocalAsserter(file_, line_, "") = asserter;
    std::terminate(); // not reached: the condition of that check is false
}

void internal::failAt(char const* file, int line, char const* text) {
    LocalFailure(file, line) = AsserterEx<Exception>("%s", text);
}

} // namespace QOB
