#include "html/page.h"

#include "html/assets.h"

namespace velum::html {

void beginPage(Out& out, std::string_view title, std::string_view said, std::string_view hint) {
    out << "<!DOCTYPE html>\n<html lang=en><head><meta charset=utf-8>"
           "<meta http-equiv=Content-Security-Policy content=\""
        << Markup{pagePolicy}
        << "\"><meta name=viewport content=\"width=device-width, initial-scale=1\">"
           "<meta name=referrer content=no-referrer><title>"
        << title << "</title><style>" << Markup{pageStyle}
        << "</style></head>\n<body><a class=skip href=#main>Skip to the content</a>"
           "<header><div><h1>"
        << title << "</h1><p>" << said
        << "</div><button type=button id=theme hidden>Dark or light</button></header>"
           "<div class=columns><nav aria-label=Contents><search hidden id=search><label for=query>"
           "Search <span class=hint>"
        << hint
        << " &mdash; key /</span></label>"
           "<input type=search id=query autocomplete=off spellcheck=false aria-describedby=found>"
           "<p id=found role=status></p><ul id=hits></ul></search><div id=tree>";
}

void beginMain(Out& out) {
    out << "</div></nav><main id=main tabindex=-1>";
}

void writePackage(Out& out, std::string_view package) {
    if (package.empty()) {
        out << "<h3 data-none>Without a package</h3>";
    } else {
        out << "<h3>" << package << "</h3>";
    }
}

void endPage(Out& out) {
    out << "</main></div><script>" << Markup{pageScript} << "</script></body></html>\n";
    out.finish();
}

} // namespace velum::html
