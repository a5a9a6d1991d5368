#pragma once

#include "tessel/export.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace Tessel {

/// Raised for a text that is not well-formed in its encoding; the text of the exception names the
/// offending byte or unit and its place, counted from 0.
class TESSEL_EXPORT EncodingError : public std::range_error {
public:
    explicit EncodingError(std::string const& text);
    EncodingError(EncodingError const& other) noexcept;
    EncodingError& operator=(EncodingError const& other) noexcept;
    ~EncodingError() override;
};

/// The wide form of a UTF-8 text: UTF-16 where wchar_t has 16 bits, UTF-32 where it has more.
/// Raises EncodingError for anything that is not valid UTF-8, including overlong forms and encoded
/// surrogates. A zero is an ordinary character.
TESSEL_EXPORT std::wstring utf8ToWide(std::string_view text);

/// The UTF-8 form of a wide text, the inverse of utf8ToWide. Raises EncodingError for a surrogate
/// that is not part of a UTF-16 pair and for a number above U+10FFFF.
TESSEL_EXPORT std::string wideToUtf8(std::wstring_view text);

} // namespace Tessel
