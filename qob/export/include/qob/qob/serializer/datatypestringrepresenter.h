#pragma once

#include "qob/qob/export.h"

#include <string>
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
};

} // namespace QOB::Serializer
