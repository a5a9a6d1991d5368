#pragma once

#include "html/out.h"

#include <string>
#include <string_view>

namespace velum::html {

/// Begins a page: style, policy, heading, and the field to search with; `hint` says what one can
/// look for. What follows is the tree of what there is to go to.
void beginPage(Out& out, std::string_view title, std::string_view said, std::string_view hint);

/// What one can look for among the objects of a dictionary.
inline constexpr std::string_view objectHint = "name, class:Unit, unit:Nm";

/// Ends the tree and begins the page's own part.
void beginMain(Out& out);

/// The heading of the objects of a package; it is empty for objects that are in none.
void writePackage(Out& out, std::string_view package);

/// Ends the page, with its script.
void endPage(Out& out);

} // namespace velum::html
