#pragma once

#include "qob/qob/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace QOB::Serializer {

/// The text of a value that has several fields: the texts of the fields with "|" between them. A
/// "|" or a backslash inside a field has a backslash in front.
class QOB_EXPORT DatatypeStringRepresenter {
public:
    std::wstring combineStrings(std::vector<std::wstring> const& parts) const;
    /// The inverse of combineStrings for two or more parts. An empty text is one empty part. Raises
    /// QOB::Exception for a backslash in front of anything but "|" and backslash.
    std::vector<std::wstring> splitString(std::wstring const& text) const;

    /// The short way for what nearly every value is, a pair of plain UTF-8 parts: combines two that
    /// hold neither a "|" nor a backslash.
    static std::string combinePlainPair(std::string_view first, std::string_view second);
    /// Splits what is two parts of plain ASCII without a backslash into views of the text. False,
    /// and the parts as they were, for every other text; splitString takes those.
    static bool splitPlainPair(std::string_view text,
                               std::string_view& first,
                               std::string_view& second) noexcept;
};

} // namespace QOB::Serializer
