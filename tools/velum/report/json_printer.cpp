#include "report/printers.h"

#include <nlohmann/json.hpp>

namespace velum::report {

namespace {

using Json = nlohmann::ordered_json;

Json placeIn(arxml::Place const& place) {
    return {{"line", place.position.line}, {"column", place.position.column}, {"path", place.path}};
}

Json consumedElements(arxml::FileReport const& file) {
    Json list = Json::array();
    for (arxml::ConsumedElements const& row : file.consumed) {
        list.push_back({{"element", row.element}, {"count", row.count}});
    }
    return list;
}

Json skippedElements(arxml::FileReport const& file) {
    Json list = Json::array();
    for (arxml::SkippedElements const& row : file.skipped) {
        list.push_back({{"element", row.element},
                        {"reason", code(row.reason)},
                        {"count", row.count},
                        {"first", placeIn(row.first)}});
    }
    return list;
}

Json findings(arxml::FileReport const& file) {
    Json list = Json::array();
    for (arxml::Finding const& finding : file.findings) {
        Json entry = placeIn(finding.places.front());
        entry["reason"] = code(finding.reason);
        entry["fault"] = finding.isFault;
        entry["text"] = finding.text;
        if (!finding.target.empty()) {
            Json places = Json::array();
            for (arxml::Place const& place : finding.places) {
                places.push_back(placeIn(place));
            }
            entry["target"] = finding.target;
            entry["count"] = finding.count;
            entry["places"] = std::move(places);
        }
        list.push_back(std::move(entry));
    }
    return list;
}

Json omissions(arxml::FileReport const& file) {
    Json list = Json::array();
    for (arxml::Omission const& omission : file.omissions) {
        Json entry = placeIn(omission.place);
        entry["element"] = omission.element;
        entry["reason"] = code(omission.reason);
        entry["text"] = omission.text;
        list.push_back(std::move(entry));
    }
    return list;
}

} // namespace

std::string printJson(Input const& input) {
    arxml::Report const& report = input.documents;
    Json classes = Json::array();
    for (arxml::ClassCount const& row : report.classes) {
        classes.push_back({{"class", row.metaclass}, {"count", row.count}});
    }
    Json files = Json::array();
    for (StoreFile const& store : input.stores) {
        files.push_back({{"file", store.file},
                         {"objects", store.objectCount},
                         {"unresolved", store.unresolvedCount}});
    }
    for (arxml::FileReport const& file : report.files) {
        files.push_back({{"file", file.file},
                         {"elements",
                          {{"met", file.elementCount},
                           {"consumed", file.consumedCount},
                           {"skipped", file.skippedCount}}},
                         {"consumed", consumedElements(file)},
                         {"skipped", skippedElements(file)},
                         {"omitted", omissions(file)},
                         {"findings", findings(file)}});
    }
    const Json all = {
        {"kept", report.isKept()}, {"objects", std::move(classes)}, {"files", std::move(files)}};
    // File names need not be UTF-8; what is not becomes U+FFFD.
    return all.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace velum::report
