#pragma once

#include "qob/qob/export.h"

#include <string>

namespace QOB::util {

/// The wide form of a zero-terminated UTF-8 text; empty for null. Raises QOB::Exception, which
/// names the offending byte and its place, if the text is not well-formed.
QOB_EXPORT std::wstring UTF8ToUString(char const* text);

} // namespace QOB::util
