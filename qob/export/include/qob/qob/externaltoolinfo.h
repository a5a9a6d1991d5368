#pragma once

#include "qob/qob/string.h"

#include <compare>
#include <utility>

namespace QOB {

/// A note of an outside tool on an object: a text under a key. The kernel doesn't interpret the
/// text.
class ExternalToolInfo {
public:
    /// The invalid value: an invalid key and an invalid text.
    ExternalToolInfo() noexcept = default;
    ExternalToolInfo(String key, String value) noexcept
        : key_(std::move(key)), value_(std::move(value)) {}

    bool isValid() const noexcept { return key_.isValid(); }
    String const& getKey() const noexcept { return key_; }
    String const& getValue() const noexcept { return value_; }

    friend bool operator==(ExternalToolInfo const&, ExternalToolInfo const&) noexcept = default;
    /// By key, then by text.
    friend std::strong_ordering operator<=>(ExternalToolInfo const&,
                                            ExternalToolInfo const&) noexcept = default;

private:
    String key_;
    String value_;
};

} // namespace QOB
