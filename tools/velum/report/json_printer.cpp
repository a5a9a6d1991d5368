#include "report/printers.h"
#include "report/skip_list.h"

#include <nlohmann/json.hpp>

namespace velum::report {

namespace {

using Json = nlohmann::ordered_json;

Json placeIn(const arxml::Place& place, const arxml::PathTree& paths) {
    return {{"line", place.position.line},
            {"column", place.position.column},
            {"path", paths.text(place.path)}};
}

Json consumedElements(const arxml::Tally& tally, const arxml::Names& names) {
    std::map<std::string_view, std::uint64_t> sorted;
    for (arxml::NameId name = 0; name < tally.endOfNames(); ++name) {
        if (const std::uint64_t count = tally.consumed(name); count > 0) {
            sorted.emplace(names.text(name), count);
        }
    }
    Json list = Json::array();
    for (const auto& [element, count] : sorted) {
        list.push_back({{"element", element}, {"count", count}});
    }
    return list;
}

Json skippedElements(const arxml::Tally& tally, const PrintJob& job) {
    Json list = Json::array();
    for (const SkipEntry& entry : skipList(tally, job.names)) {
        list.push_back({{"element", entry.element},
                        {"reason", code(entry.reason)},
                        {"count", entry.skip->count},
                        {"first", placeIn(entry.skip->first, job.paths)}});
    }
    return list;
}

Json findings(const arxml::FileReport& file, const arxml::PathTree& paths) {
    Json list = Json::array();
    for (const arxml::Finding& finding : file.findings()) {
        Json entry = placeIn(finding.places.front(), paths);
        entry["reason"] = code(finding.reason);
        entry["fault"] = finding.isFault;
        entry["text"] = finding.text;
        if (!finding.target.empty()) {
            Json places = Json::array();
            for (const arxml::Place& place : finding.places) {
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

Json omissions(const arxml::FileReport& file, const PrintJob& job) {
    Json list = Json::array();
    for (const arxml::Omission& omission : file.omissions) {
        Json entry = placeIn(omission.place, job.paths);
        entry["element"] = job.names.text(omission.element);
        entry["reason"] = code(omission.reason);
        entry["text"] = omission.text;
        list.push_back(std::move(entry));
    }
    return list;
}

} // namespace

std::string printJson(const PrintJob& job) {
    Json classes = Json::array();
    for (const arxml::ClassCount& row : job.report.classes) {
        classes.push_back({{"class", row.metaclass}, {"count", row.count}});
    }
    Json files = Json::array();
    for (const arxml::FileReport& file : job.report.files) {
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
