#include "model/values.h"

#include "model/addresses.h"
#include "model/objects.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <string_view>

namespace velum::model {

namespace {

using Json = nlohmann::ordered_json;

Json realJson(double number) {
    if (std::isfinite(number)) {
        return number;
    }
    return std::isnan(number) ? "NaN" : number < 0 ? "-INF" : "INF";
}

Json propertyJson(QOB::ClassObject const& owner,
                  QOB::Attribute const& attribute,
                  QOB::Object const& value,
                  Addresses& addresses) {
    if (kindOf(value) != ValueKind::reference) {
        return jsonOf(value, addresses);
    }
    QOB::ClassObject const object(value);
    return Addresses::isPart(attribute, object, owner) ? objectJson(object, addresses)
                                                       : Json{{"ref", addresses.of(object)}};
}

} // namespace

ValueKind kindOf(QOB::Object const& value) {
    if (value.get() == nullptr) {
        return ValueKind::nothing;
    }
    if (QOB::ClassObject(value).get() != nullptr) {
        return ValueKind::reference;
    }
    std::string_view const type = value.getLumvoName(false);
    if (type == QOB::String::getTypeName()) {
        return QOB::String(value).isValid() ? ValueKind::text : ValueKind::nothing;
    }
    if (value.toString().view().empty()) {
        return ValueKind::nothing; // the invalid value of any other type
    }
    if (type == QOB::Real::getTypeName()) {
        return ValueKind::number;
    }
    if (type == QOB::Integer::getTypeName()) {
        return ValueKind::integer;
    }
    return type == QOB::Boolean::getTypeName() ? ValueKind::truth : ValueKind::other;
}

std::string textOf(QOB::Object const& value, Addresses& addresses) {
    switch (kindOf(value)) {
    case ValueKind::nothing:
        return "nothing";
    case ValueKind::reference:
        return addresses.of(QOB::ClassObject(value));
    default:
        return std::string(value.toString());
    }
}

Json jsonOf(QOB::Object const& value, Addresses& addresses) {
    switch (kindOf(value)) {
    case ValueKind::nothing:
        return nullptr;
    case ValueKind::number:
        return realJson(QOB::Real(value));
    case ValueKind::integer:
        return static_cast<int>(QOB::Integer(value));
    case ValueKind::truth:
        return QOB::Boolean(value) == QOB::Boolean(true);
    default:
        return textOf(value, addresses);
    }
}

Json objectJson(QOB::ClassObject const& object, Addresses& addresses) {
    Json properties = Json::object();
    for (QOB::Attribute const& attribute : addresses.attributes().of(object)) {
        if (attribute.isWayToOwner || attribute.isOtherEnd) {
            continue;
        }
        std::vector<QOB::Object> const values = attribute.valuesOf(object);
        if (values.empty()) {
            continue;
        }
        Json& property = properties[std::string(attribute.name)];
        if (!attribute.isMultiValued) {
            property = propertyJson(object, attribute, values.front(), addresses);
            continue;
        }
        property = Json::array();
        for (QOB::Object const& value : values) {
            property.push_back(propertyJson(object, attribute, value, addresses));
        }
    }
    return {{"class", classOf(object)},
            {"path", addresses.of(object)},
            {"properties", std::move(properties)}};
}

} // namespace velum::model
