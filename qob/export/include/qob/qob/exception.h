#pragma once

#include "qob/qob/export.h"
#include "qob/qob/hostexception.h"

#include <string>

namespace QOB {

/// The exception by which the kernel and all metamodels report a broken precondition or invariant.
class QOB_EXPORT Exception : public host::UserException {
public:
    explicit Exception(std::string const& message);
    Exception(Exception const&);
    Exception& operator=(Exception const&);
    ~Exception() noexcept override;

    clone_base const* clone() const override;
    void rethrow() const override;
};

/// Raised by an operation that is declared but not implemented.
class QOB_EXPORT UnImplementedException : public Exception {
public:
    explicit UnImplementedException(std::string const& message);
    UnImplementedException(UnImplementedException const&);
    UnImplementedException& operator=(UnImplementedException const&);
    ~UnImplementedException() noexcept override;

    clone_base const* clone() const override;
    void rethrow() const override;
};

} // namespace QOB
