#pragma once

#include "arxml/account.h"
#include "arxml/documents.h"
#include "report/report.h"

#include <string>
#include <utility>

namespace velum::dictionary {

/// What everybody works with during one import: what was read, what becomes of it, and the report.
struct ImportContext {
    arxml::Documents& documents;
    arxml::Account& account;
    report::Report& report;

    report::FileReport& fileOf(arxml::Element element) const {
        return report.files[element.file()];
    }
    static report::Place placeOf(arxml::Element element) {
        return {element.position(), element.path()};
    }

    /// Reports something at an element; whether it is a fault follows from the reason.
    void find(arxml::Element element, report::Reason reason, std::string text) const;
    /// Reports something that is no fault.
    void note(arxml::Element element, report::Reason reason, std::string text) const;
    /// Reports something at an element and skips the element for it.
    void refuse(arxml::Element element, report::Reason reason, std::string text) const;
    /// The same with a text that is no number, if no system constants stand in its place.
    void refuseNumber(arxml::Element element, report::Reason fault, std::string text) const;

    /// The same of a reference: the findings about one target of a file are one.
    void refuseReference(arxml::Element reference, report::Reason reason, std::string text) const;

    /// "FILE:LINE:COLUMN".
    std::string whereabouts(arxml::Element element) const;
    std::string path(arxml::Element element) const {
        return documents.index.paths().text(element.path());
    }
    std::string_view kind(arxml::Element element) const {
        return documents.names.text(element.name());
    }
};

/// "(text)": what a file says, as messages show it.
inline std::string bracketed(std::string_view text) {
    std::string shown = "(";
    shown += text;
    shown += ')';
    return shown;
}

} // namespace velum::dictionary
