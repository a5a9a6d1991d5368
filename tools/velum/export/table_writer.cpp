#include "export/writers.h"
#include "model/addresses.h"
#include "model/objects.h"
#include "model/values.h"
#include "report/csv.h"

#include <nlohmann/json.hpp>

#include <set>
#include <vector>

namespace velum::exporting {

namespace {

using model::Addresses;
using QOB::ClassObject;
using report::csvCell;
using report::endOfCsvRow;

/// Whether the property is a column of its own; the container has one for all classes.
bool isColumn(QOB::Attribute const& attribute) {
    return !attribute.isWayToOwner && !attribute.isOtherEnd;
}

std::string
cellOf(QOB::Attribute const& attribute, ClassObject const& object, Addresses& addresses) {
    using Json = nlohmann::ordered_json;
    std::vector<QOB::Object> const values = attribute.valuesOf(object);
    if (values.empty()) {
        return {};
    }
    if (!attribute.isMultiValued) {
        bool const isNothing = model::kindOf(values.front()) == model::ValueKind::nothing;
        return isNothing ? std::string() : csvCell(model::textOf(values.front(), addresses));
    }
    Json list = Json::array();
    for (QOB::Object const& value : values) {
        list.push_back(model::jsonOf(value, addresses));
    }
    return csvCell(list.dump(-1, ' ', false, Json::error_handler_t::replace));
}

class TableWriter {
public:
    explicit TableWriter(TableSink const& sink) : sink_(sink) {}

    bool write(ClassObject const& object) {
        std::string const metaclass(model::classOf(object));
        std::vector<QOB::Attribute> const& attributes = addresses_.attributes().of(object);
        std::string rows;
        if (begun_.insert(metaclass).second) {
            rows = "path,container";
            for (QOB::Attribute const& attribute : attributes) {
                rows += isColumn(attribute) ? "," + csvCell(attribute.name.view()) : "";
            }
            rows += endOfCsvRow;
        }
        rows += csvCell(addresses_.of(object)) + ',';
        if (object.hasContainerQOB()) {
            rows += csvCell(addresses_.of(object.getContainerQOB()));
        }
        for (QOB::Attribute const& attribute : attributes) {
            rows += isColumn(attribute) ? "," + cellOf(attribute, object, addresses_) : "";
        }
        rows += endOfCsvRow;
        return sink_(metaclass, rows);
    }

private:
    TableSink const& sink_;
    Addresses addresses_;
    std::set<std::string> begun_;
};

} // namespace

bool writeTables(QOB::Model const& model, TableSink const& sink) {
    TableWriter writer(sink);
    for (ClassObject const& free : model::freeObjects(model)) {
        std::vector<ClassObject> pending{free};
        while (!pending.empty()) {
            ClassObject const object = pending.back();
            pending.pop_back();
            if (!writer.write(object)) {
                return false;
            }
            std::vector<ClassObject> const contained = model::containedIn(object);
            pending.insert(pending.end(), contained.rbegin(), contained.rend());
        }
    }
    return true;
}

} // namespace velum::exporting
