#include "diff/printers.h"
#include "model/values.h"

#include <nlohmann/json.hpp>

namespace velum::diff {

namespace {

using model::Addresses;
using Json = nlohmann::ordered_json;

std::string_view wordOf(ChangeKind kind) {
    switch (kind) {
    case ChangeKind::value:
        return "value";
    case ChangeKind::order:
        return "order";
    case ChangeKind::metaclass:
        return "class";
    case ChangeKind::added:
        return "added";
    case ChangeKind::removed:
        return "removed";
    case ChangeKind::renamed:
        return "renamed";
    }
    return "";
}

Json sideJson(Change const& change, std::vector<QOB::Object> const& values, Addresses& addresses) {
    bool const isPart = change.kind == ChangeKind::added || change.kind == ChangeKind::removed;
    if (change.isMany) {
        Json list = Json::array();
        for (QOB::Object const& value : values) {
            list.push_back(model::jsonOf(value, addresses));
        }
        return list;
    }
    if (values.empty()) {
        return nullptr;
    }
    return isPart ? model::objectJson(QOB::ClassObject(values.front()), addresses)
                  : model::jsonOf(values.front(), addresses);
}

Json pathsOf(std::vector<Single> const& objects) {
    Json list = Json::array();
    for (Single const& each : objects) {
        list.push_back(each.path);
    }
    return list;
}

Json numbersOf(Comparison const& comparison) {
    return {{"added", comparison.added.size()},
            {"removed", comparison.removed.size()},
            {"renamed", comparison.renamed.size()},
            {"changed", comparison.changedCount()},
            {"same", comparison.sameCount}};
}

std::string dumped(Json const& json) {
    // Texts of files need not be UTF-8; what is not becomes U+FFFD.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

std::string printJson(Comparison const& comparison, Sides const& sides) {
    Json renamed = Json::array();
    for (Renaming const& each : comparison.renamed) {
        renamed.push_back({{"from", each.from}, {"to", each.to}});
    }
    Json changed = Json::array();
    for (Change const& change : comparison.changed) {
        changed.push_back({{"path", change.path},
                           {"part", change.part},
                           {"property", change.property},
                           {"kind", wordOf(change.kind)},
                           {"old", sideJson(change, change.oldValues, sides.left)},
                           {"new", sideJson(change, change.newValues, sides.right)}});
    }
    return dumped({{"added", pathsOf(comparison.added)},
                   {"removed", pathsOf(comparison.removed)},
                   {"renamed", std::move(renamed)},
                   {"changed", std::move(changed)},
                   {"summary", numbersOf(comparison)}});
}

std::string summaryJson(Comparison const& comparison) {
    return dumped({{"summary", numbersOf(comparison)}});
}

} // namespace velum::diff
