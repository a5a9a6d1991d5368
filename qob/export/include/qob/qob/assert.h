#pragma once

#include "qob/qob/exception.h"
#include "qob/qob/export.h"

#include <concepts>
#include <cstdarg>
#include <cstring>
#include <string>

/// The assertion chain: an Asserter carries the condition, fLogBuf the text and a LocalAsserter the
/// place. Assigning an Asserter to a LocalAsserter raises if the condition is false. Every failed
/// check throws, in every kind of build.
namespace QOB {

class QOB_EXPORT Asserter {
public:
    /// Size of fLogBuf in bytes, the closing zero included.
    static constexpr int LogBufferSize = 4097;

    /// The text of the latest failed check. One buffer per process; never null.
    static char* const fLogBuf;

    explicit Asserter(bool condition) noexcept : condition_(condition) {}
    Asserter(Asserter const&) = default;
    Asserter& operator=(Asserter const&) = default;
    virtual ~Asserter();

    /// Does nothing if the condition holds, otherwise reports the failure at the given place.
    virtual void raise(char const* file, int line, char const* note) const = 0;

protected:
    bool condition() const noexcept { return condition_; }

    /// Formats into fLogBuf. If the formatter fails, the text is empty.
    static void format(char const* format, std::va_list arguments);

    /// "Assertion failed: <text> at <file>:<line>: <note>" with the text of fLogBuf.
    static std::string message(char const* file, int line, char const* note);

private:
    bool condition_;
};

/// An Asserter that throws `E`. With a condition, the text is formatted only if it is false;
/// without one, the check has already failed.
template <class E>
class AsserterEx : public Asserter {
public:
    // A template, so that a text is never taken for a condition.
    template <std::same_as<bool> Condition>
    explicit AsserterEx(Condition condition, char const* format, ...) : Asserter(condition) {
        if (!condition) {
            std::va_list arguments;
            va_start(arguments, format);
            Asserter::format(format, arguments);
            va_end(arguments);
        }
    }

    explicit AsserterEx(char const* format, ...) : Asserter(false) {
        std::va_list arguments;
        va_start(arguments, format);
        Asserter::format(format, arguments);
        va_end(arguments);
    }

    void raise(char const* file, int line, char const* note) const override {
        if (!condition()) {
            throw E(message(file, line, note));
        }
    }
};

/// The place of a check. Assigning an Asserter to it triggers the check.
class QOB_EXPORT LocalAsserter {
public:
    LocalAsserter(char const* file, int line, char const* note) noexcept
        : file_(file), line_(line), note_(note) {}

    void operator=(Asserter const& asserter) const { asserter.raise(file_, line_, note_); }

private:
    char const* file_;
    int line_;
    char const* note_;
};

/// The place of a check that has already failed. Assigning an Asserter to it raises.
class QOB_EXPORT LocalFailure {
public:
    LocalFailure(char const* file, int line) noexcept : file_(file), line_(line) {}

    /// The asserter must be one without a condition, or with a false one.
    [[noreturn]] void operator=(Asserter const& asserter) const;

private:
    char const* file_;
    int line_;
};

namespace internal {
/// The slow path of the macros below, which keeps the formatting out of the checked functions.
[[noreturn]] QOB_EXPORT void failAt(char const* file, int line, char const* text);
} // namespace internal

} // namespace QOB

/// Throws a QOB::Exception with a printf-style text. The compiler knows that it doesn't return.
#define QOB_FAIL(...)                                                                              \
    (::QOB::LocalFailure(__FILE__, __LINE__) = ::QOB::AsserterEx<::QOB::Exception>(__VA_ARGS__))

/// A check of what a caller gave, or of when it called: throws a QOB::Exception with a fixed text
/// if the condition is false.
#define QOB_REQUIRE(condition, text) QOB_REQUIRE_IN(__FILE__, condition, text)

/// A check of our own state: if the condition is false, the fault is in these libraries and not at
/// the caller. Throws in the same way.
#define QOB_INVARIANT(condition, text) QOB_INVARIANT_IN(__FILE__, condition, text)

/// The same for installed headers. `path` is the header's path in the repository, so that an error
/// text never names a folder of the user's machine.
#define QOB_REQUIRE_IN(path, condition, text)                                                      \
    ((condition) ? static_cast<void>(0) : ::QOB::internal::failAt(path, __LINE__, text))
#define QOB_INVARIANT_IN(path, condition, text)                                                    \
    ((condition) ? static_cast<void>(0) : ::QOB::internal::failAt(path, __LINE__, text))
