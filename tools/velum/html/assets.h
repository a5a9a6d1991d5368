#pragma once

#include <string_view>

namespace velum::html {

// What the build puts in of the files in page/.

extern const std::string_view pageStyle;    ///< Of the page, with that of the pictures.
extern const std::string_view pictureStyle; ///< Of a picture that stands alone.
extern const std::string_view pageScript;
/// A content security policy that lets this style sheet and this script in and nothing else.
extern const std::string_view pagePolicy;

} // namespace velum::html
