#pragma once

#include "html/out.h"

#include <string>
#include <string_view>

namespace velum::html {

/// Begins a page: style, policy, heading, and the field to search with. What follows is the tree of
/// what there is to go to.
void beginPage(Out& out, std::string_view title, std::string_view said);

/// Ends the tree and begins the page's own part.
void beginMain(Out& out);

/// Ends the page, with its script.
void endPage(Out& out);

} // namespace velum::html
