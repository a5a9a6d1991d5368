#pragma once

#include "findings/file_log.h"
#include "reading/account.h"
#include "reading/documents.h"
#include "source/watch.h"

#include <string>
#include <utility>
#include <vector>

namespace velum::arxml {

/// What everybody works with during one import: what was read, what becomes of it, and the report.
struct ImportContext {
    Documents& documents;
    Account& account;
    std::vector<FileLog>& logs; ///< By file.
    Watch const& watch;

    FileLog& logOf(Element element) const { return logs[element.file()]; }
    static Spot spotOf(Element element) { return {element.position(), element.path()}; }

    /// Reports something at an element; whether it is a fault follows from the reason.
    void find(Element element, Reason reason, std::string text) const;
    /// Reports something that is no fault.
    void note(Element element, Reason reason, std::string text) const;
    /// Reports something at an element and skips the element for it.
    void refuse(Element element, Reason reason, std::string text) const;
    /// The same with a text that is no number, if no system constants stand in its place.
    void refuseNumber(Element element, Reason fault, std::string text) const;

    /// The same of a reference: the findings about one target of a file are one.
    void refuseReference(Element reference, Reason reason, std::string text) const;

    /// "FILE:LINE:COLUMN".
    std::string whereabouts(Element element) const;
    std::string path(Element element) const { return documents.index.paths().text(element.path()); }
    std::string_view kind(Element element) const { return documents.names.text(element.name()); }
};

/// "(text)": what a file says, as messages show it.
inline std::string bracketed(std::string_view text) {
    std::string shown = "(";
    shown += text;
    shown += ')';
    return shown;
}

} // namespace velum::arxml
