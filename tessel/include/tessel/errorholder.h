#pragma once

#include "tessel/export.h"

#include <optional>
#include <string>

namespace Tessel {

/// Receives the failure of a conversion from text or bytes, so that a text that a user typed wrong
/// is no exception. Starts without an error.
class TESSEL_EXPORT ErrorHolder {
public:
    ErrorHolder() noexcept = default;

    bool hasError() const noexcept { return text_.has_value(); }
    /// Takes the cause of a failure; replaces an earlier one.
    void setError(std::string text);
    /// The cause as a sentence; empty if there is no error.
    const std::string& getError() const noexcept;
    void clear() noexcept { text_.reset(); }

private:
    std::optional<std::string> text_;
};

} // namespace Tessel
