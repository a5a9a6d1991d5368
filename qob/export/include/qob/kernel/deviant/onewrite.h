#pragma once

#include "qob/qob/export.h"

namespace QOB::internal {

/// The number of deviants with observers, in all models.
extern QOB_EXPORT int observedDeviants;

QOB_EXPORT void beginWrite() noexcept;
/// Ends a write. The outermost one tells the observers, and passes on what they raise unless the
/// write itself has failed.
QOB_EXPORT void endWrite();

/// What is written while one of these exists is one change to observers, if no transaction is open.
/// Rules that write two objects have one around both; those inside it count for nothing. Without an
/// observer it costs two comparisons.
class OneWrite {
public:
    OneWrite() noexcept : isCounted_(observedDeviants != 0) {
        if (isCounted_) [[unlikely]] {
            beginWrite();
        }
    }
    OneWrite(OneWrite const&) = delete;
    OneWrite& operator=(OneWrite const&) = delete;
    // The write is complete when this raises.
    ~OneWrite() noexcept(false) { // NOLINT(bugprone-exception-escape)
        if (isCounted_) [[unlikely]] {
            endWrite();
        }
    }

private:
    bool const isCounted_;
};

} // namespace QOB::internal
