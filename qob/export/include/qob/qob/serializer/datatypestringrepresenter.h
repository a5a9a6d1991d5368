#pragma once

#include "qob/qob/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace QOB::Serializer {

/// Converts a value with several fields to text and back: the texts of the fields, separated by
/// "|". A "|" or a backslash inside a field is escaped by a backslash.
class QOB_EXPORT DatatypeStringRepresenter {
public:
    std::wstring combineStrings(std::vector<std::wstring> const& parts) const;
    /// The inverse of combineStrings for two or more parts. An empty text gives one empty part.
    /// Raises QOB::Exception for a backslash before any other character.
    std::vector<std::wstring> splitString(std::wstring const& text) const;

    /// A fast path for the usual pair of plain UTF-8 parts: combines two that contain neither "|"
    /// nor a backslash.
    static std::string combinePlainPair(std::string_view first, std::string_view second);
    /// Splits a text of two plain ASCII parts without a backslash into views of the text. For any
    /// other text returns false and leaves the parts unchanged; use splitString for those.
    static bool splitPlainPair(std::string_view text,
                               std::string_view& first,
                               std::string_view& second) noexcept;
};

} // namespace QOB::Serializer
