#include "report/printers.h"
#include "report/skip_list.h"

#include <nlohmann/json.hpp>

namespace velum::report {

namespace {

using Json = nlohmann::ordered_json;

Json placeIn(arxml::Place const& place, arxml::PathTree const& paths) {
    return {{"line", place.position.line},
            {"column", place.position.column},
            {"path", paths.text(place.path)}};
}

Json consumedElements(arxml::Tally const& tally, arxml::Names const& names) {
    std::map<std::string_view, std::uint64_t> sorted;
    for (arxml::NameId name = 0; name < tally.endOfNames(); ++name) {
        if (const std::uint64_t count = tally.consumed(name); count > 0) {
            sorted.emplace(names.text(name), count);
        }
    }
    Json list = Json::array();
    for (auto const& [element, count] : sorted) {
        list.push_back({{"element", element}, {"count", count}});
    }
    return list;
}

Json skippedElements(arxml::Tally const& tally, PrintJob const& job) {
    Json list = Json::array();
    for (SkipEntry const& entry : skipList(tally, job.names)) {
        list.push_back({{"element", entry.element},
                        {"reason", code(entry.reason)},
                        {"count", entry.skip->count},
                        {"first", placeIn(entry.skip->first, job.paths)}});
    }
    return list;
}

Json findings(arxml::FileReport const& file, arxml::PathTree const& paths) {
    Json list = Json::array();
    for (arxml::Finding const& finding : file.findings()) {
        Json entry = placeIn(finding.places.front(), paths);
        entry["reason"] = code(finding.reason);
        entry["fault"] = finding.isFault;
        entry["text"] = finding.text;
        if (!finding.target.empty()) {
            Json places = Json::array();
            for (arxml::Place const& place : finding.places) {
                places.push_back(placeIn(place, paths));
            }
            entry["target"] = finding.target;
            entry["count"] = finding.count;
            entry["places"] = std::move(places);
        }
        list.push_back(std::move(entry));
    }
    return list;
}

Json omissions(arxml::FileReport const& file, PrintJob const& job) {
    Json list = Json::array();
    for (arxml::Omission const& omission : file.omissions) {
        Json entry = placeIn(omission.place, job.paths);
        entry["element"] = job.names.text(omission.element);
        entry["reason"] = code(omission.reason);
        entry["text"] = omission.text;
        list.push_back(std::move(entry));
    }
    return list;
}

} // namespace

std::string printJson(PrintJob const& job) {
    Json classes = Json::array();
    for (arxml::ClassCount const& row : job.report.classes) {
        classes.push_back({{"class", row.metaclass}, {"count", row.count}});
    }
    Json files = Json::array();
    for (arxml::FileReport const& file : job.report.files) {
        files.push_back({{"file", file.file},
                         {"elements",
                          {{"met", file.tally.met()},
                           {"consumed", file.tally.consumed()},
                           {"skipped", file.tally.skipped()}}},
                         {"consumed", consumedElements(file.tally, job.names)},
                         {"skipped", skippedElements(file.tally, job)},
                         {"omitted", omissions(file, job)},
                         {"findings", findings(file, job.paths)}});
    }
    const Json all = {
        {"kept", job.report.isKept}, {"objects", std::move(classes)}, {"files", std::move(files)}};
    // File names need not be UTF-8; what is not becomes U+FFFD.
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace velum::report
