#pragma once

#include "qob/qob/export.h"
#include "qob/qob/hostexception.h"

#include <string>

namespace QOB {

/// The one failure channel of the kernel and of every metamodel on it: a broken precondition or a
/// broken invariant, told in words.
class QOB_EXPORT Exception : public host::UserException {
public:
    explicit Exception(std::string const& message);
    Exception(Exception const&);
    Exception& operator=(Exception const&);
    ~Exception() noexcept override;

    clone_base const* clone() const override;
    void rethrow() const override;
};

/// Raised by a declared operation that nobody has built.
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
