#include "check/printers.h"

#include "report/printers.h"

#include <nlohmann/json.hpp>

namespace velum::check {

std::string printText(std::vector<Issue> const& issues) {
    std::string text;
    for (Issue const& issue : issues) {
        if (issue.place) {
            text += report::inOneLine(placeText(issue)) + ": ";
        }
        text += word(issue.rule->severity);
        text += ": ";
        text += issue.rule->id;
        text += ": ";
        text += report::inOneLine(issue.path);
        text += ": ";
        text += report::inOneLine(issue.text);
        text += '\n';
    }
    return text;
}

std::string printJson(std::vector<Issue> const& issues) {
    using Json = nlohmann::ordered_json;
    Json list = Json::array();
    for (Issue const& issue : issues) {
        Json entry = Json::object();
        if (issue.place) {
            entry["file"] = issue.place->file;
        }
        if (issue.hasLine()) {
            entry["line"] = issue.place->position.line;
            entry["column"] = issue.place->position.column;
        }
        entry["path"] = issue.path;
        entry["rule"] = issue.rule->id;
        entry["severity"] = word(issue.rule->severity);
        entry["text"] = issue.text;
        list.push_back(std::move(entry));
    }
    const Json all = {{"issues", std::move(list)}};
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace velum::check
