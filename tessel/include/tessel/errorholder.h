#pragma once

#include "tessel/export.h"

#include <optional>
#include <string>

namespace Tessel {

/// Receives the error of a conversion from text or bytes, so that a user's typing mistake doesn't
/// raise an exception. Starts without an error.
class TESSEL_EXPORT ErrorHolder {
public:
    ErrorHolder() noexcept = default;

    bool hasError() const noexcept { return text_.has_value(); }
    /// Sets the cause of the failure, replacing an earlier one.
    void setError(std::string text);
    /// The cause as a sentence; empty if there is no error.
    std::string const& getError() const noexcept;
    void clear() noexcept { text_.reset(); }

private:
    std::optional<std::string> text_;
};

} // namespace Tessel
