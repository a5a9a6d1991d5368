#pragma once

#include "qob/qob/export.h"

#include <boost/exception/exception.hpp>

#include <cstdarg>
#include <cstddef>
#include <exception>
#include <string>

/// What a host process provides to every library it loads: the base class of its exceptions and a
/// bounded formatter.
namespace host {

/// Base of all exceptions that a user of the host may see. Owns its text. A handler of
/// `std::exception` catches it, `boost::exception` lets a handler attach data, and `clone_base`
/// lets it pass between threads.
class QOB_EXPORT UserException : public std::exception,
                                 public boost::exception,
                                 public boost::exception_detail::clone_base {
public:
    explicit UserException(std::string message);
    UserException(UserException const&);
    UserException& operator=(UserException const&);
    ~UserException() noexcept override;

    /// The text as given at construction; owned by the exception.
    char const* what() const noexcept override;

    clone_base const* clone() const override;
    void rethrow() const override;

private:
    std::string message_;
};

/// Formats like `vsnprintf` into `buffer`, which holds `limit` bytes with the closing zero. A text
/// that doesn't fit is cut. Returns the number of characters written, or -1 on failure; the
/// buffer's content is then undefined.
QOB_EXPORT int formatBounded(char* buffer, std::size_t limit, char const* format, std::va_list);

} // namespace host
