#include "dictionary/findings.h"

#include <string>

namespace velum::dictionary {

using arxml::Fragment;
using report::Reason;

std::optional<Reason> reasonAgainst(const Fragment& fragment,
                                    const ImportContext& context,
                                    const std::unordered_map<arxml::PathId, std::size_t>& taken) {
    report::FileReport& report = context.fileReport(fragment.file());
    const std::string kind(context.names.text(fragment.name(0)));
    const Fragment::Index name = fragment.child(0, arxml::element::shortName);
    if (name == Fragment::none || fragment.text(name).empty()) {
        report.find(placeOf(fragment, 0), Reason::noName, "This " + kind + " has no SHORT-NAME.");
        return Reason::noName;
    }
    if (taken.contains(fragment.path(0))) {
        report.find(placeOf(fragment, 0),
                    Reason::duplicatePath,
                    "Another " + kind + " of this path stands before; that one counts.");
        return Reason::duplicatePath;
    }
    return std::nullopt;
}

} // namespace velum::dictionary
