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
    void find(arxml::Element element, report::Reason reason, std::string text) const {
        fileOf(element).find(placeOf(element), reason, std::move(text));
    }
    /// Reports something that is no fault.
    void note(arxml::Element element, report::Reason reason, std::string text) const {
        fileOf(element).note(placeOf(element), reason, std::move(text));
    }
    /// Reports something at an element and skips the element for it.
    void refuse(arxml::Element element, report::Reason reason, std::string text) const {
        find(element, reason, std::move(text));
        account.skip(element, reason);
    }
    /// The same with a text that is no number, if it is not a system constant's.
    void refuseNumber(arxml::Element element, report::Reason fault, std::string text) const {
        if (element.child(arxml::element::syscRef)) {
            refuse(element, report::Reason::symbolic, "The number is a system constant.");
        } else {
            refuse(element, fault, std::move(text));
        }
    }

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
