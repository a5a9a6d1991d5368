#include "merge/printers.h"

#include "report/printers.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string_view>

namespace velum::merge {

namespace {

using Json = nlohmann::ordered_json;

std::string_view wordOf(Taken taken) {
    return taken == Taken::ours ? "ours" : taken == Taken::theirs ? "theirs" : "";
}

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count) + ' ' + std::string(what) + (count == 1 ? "" : "s");
}

} // namespace

std::string printText(Outcome const& outcome) {
    std::string text;
    for (Conflict const& each : outcome.conflicts) {
        text += report::inOneLine(each.path + (each.property.empty() ? "" : " ") + each.property) +
                ": conflict (" + std::string(code(each.kind)) + ")" +
                (each.taken == Taken::neither ? "" : ", decided for ") +
                std::string(wordOf(each.taken)) + "\n";
        text += "  base    " + report::inOneLine(each.base) + "\n";
        text += "  ours    " + report::inOneLine(each.ours) + "\n";
        text += "  theirs  " + report::inOneLine(each.theirs) + "\n";
    }
    auto const open = static_cast<std::size_t>(
        std::count_if(outcome.conflicts.begin(), outcome.conflicts.end(), [](Conflict const& each) {
            return each.taken == Taken::neither;
        }));
    if (open != 0) {
        return text + counted(open, "conflict") + "; nothing is written.\n";
    }
    return text + counted(outcome.changeCount, "change") + " of theirs merged" +
           (outcome.conflicts.empty()
                ? ".\n"
                : ", " + counted(outcome.conflicts.size(), "conflict") + " decided.\n");
}

std::string printJson(Outcome const& outcome) {
    Json conflicts = Json::array();
    for (Conflict const& each : outcome.conflicts) {
        conflicts.push_back({{"path", each.path},
                             {"property", each.property},
                             {"kind", code(each.kind)},
                             {"base", each.base},
                             {"ours", each.ours},
                             {"theirs", each.theirs},
                             {"taken", wordOf(each.taken)}});
    }
    Json const document = {{"merged", outcome.isMerged()},
                           {"changes", outcome.changeCount},
                           {"conflicts", std::move(conflicts)}};
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace velum::merge
