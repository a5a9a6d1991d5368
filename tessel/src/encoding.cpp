#include "tessel/encoding.h"

#include "utf_conversion.h"

namespace Tessel {

EncodingError::EncodingError(std::string const& text) : std::range_error(text) {
}
EncodingError::EncodingError(EncodingError const& other) noexcept = default;
EncodingError& EncodingError::operator=(EncodingError const& other) noexcept = default;
EncodingError::~EncodingError() = default;

std::wstring utf8ToWide(std::string_view text) {
    return Detail::decodeUtf8<wchar_t>(text);
}

std::string wideToUtf8(std::wstring_view text) {
    return Detail::encodeUtf8<wchar_t>(text);
}

} // namespace Tessel
