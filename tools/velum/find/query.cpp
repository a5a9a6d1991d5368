#include "find/query.h"

#include "find/references.h"
#include "model/addresses.h"
#include "model/glob.h"
#include "model/metaclasses.h"
#include "model/objects.h"
#include "model/values.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <unordered_set>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesunit.h>

namespace velum::find {

namespace {

using QOB::ClassObject;
using Values = std::vector<QOB::Object>;

/// Whether an object goes by the name that someone gave.
bool isNamed(ClassObject const& object, std::string const& pattern) {
    bool const isPath = pattern.find('/') != std::string::npos;
    std::string const text = isPath ? model::pathOf(object) : model::nameOf(object);
    return !text.empty() && model::matches(pattern, text);
}

/// A unit goes by its symbol too, which may have any characters in it.
bool isUnitNamed(ClassObject const& object, std::string const& pattern) {
    Zorvane::metamodel::types::Unit const unit(object);
    return isNamed(object, pattern) ||
           (unit.isValid() && unit.hasSymbol() && std::string(unit.getSymbol()) == pattern);
}

std::optional<double> numberIn(std::string const& text) {
    double number = 0;
    auto const [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    bool const isNumber = fault == std::errc() && end == text.data() + text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Looks at one object after the other.
class Search {
public:
    Search(QOB::Model const& model, Query const& query)
        : query_(query), references_(model, addresses_) {
        for (ClassObject const& object : references_.objects()) {
            if (query.usedBy && isIn(object, *query.usedBy)) {
                auto const& used = references_.usedBy(object);
                used_.insert(used.begin(), used.end());
                isUserKnown_ = true;
            }
            if (query.uses && isIn(object, *query.uses)) {
                targets_.insert(object.get());
            }
        }
    }

    Result run() {
        Result result;
        if (query_.usedBy && !isUserKnown_) {
            result.unknown.push_back(*query_.usedBy);
        }
        if (query_.uses && targets_.empty()) {
            result.unknown.push_back(*query_.uses);
        }
        for (ClassObject const& object : references_.objects()) {
            if ((query_.withParts || object.hasExternalId()) && fits(object)) {
                result.found.push_back({addresses_.of(object),
                                        std::string(model::classOf(object)),
                                        model::nameOf(object)});
            }
        }
        std::sort(result.found.begin(), result.found.end(), [](Found const& a, Found const& b) {
            return a.path < b.path;
        });
        return result;
    }

private:
    /// Whether an object goes by the name or belongs to one that does.
    bool isIn(ClassObject const& object, std::string const& pattern) {
        ClassObject next = object;
        while (next.get() != nullptr && !isNamed(next, pattern)) {
            next = addresses_.around(next);
        }
        return next.get() != nullptr;
    }

    bool fits(ClassObject const& object) {
        return (!query_.name || isNamed(object, *query_.name)) &&
               (query_.metaclass == nullptr ||
                model::isKindOf(model::classOf(object), *query_.metaclass)) &&
               (!query_.unit || hasUnit(object)) && (!query_.method || hasMethod(object)) &&
               (!query_.usedBy || used_.contains(object.get())) &&
               (!query_.uses || isUser(object)) &&
               (!query_.isUnused || (!object.hasContainerQOB() && references_.isUnused(object))) &&
               std::all_of(query_.properties.begin(),
                           query_.properties.end(),
                           [&](PropertyFilter const& filter) { return has(object, filter); });
    }

    Values valuesOf(ClassObject const& object, std::string const& property) {
        for (QOB::Attribute const& attribute : addresses_.attributes().of(object)) {
            if (attribute.name == property) {
                return attribute.valuesOf(object);
            }
        }
        return {};
    }

    bool hasUnit(ClassObject const& object) {
        auto const isIt = [&](QOB::Object const& unit) {
            return isUnitNamed(ClassObject(unit), *query_.unit);
        };
        Values const own = valuesOf(object, "Unit");
        if (model::classOf(object) != "Dimension" && std::any_of(own.begin(), own.end(), isIt)) {
            return true;
        }
        Values const methods = valuesOf(object, "CompuMethod");
        return std::any_of(methods.begin(), methods.end(), [&](QOB::Object const& method) {
            Values const units = valuesOf(ClassObject(method), "Unit");
            return std::any_of(units.begin(), units.end(), isIt);
        });
    }

    bool hasMethod(ClassObject const& object) {
        Values const methods = valuesOf(object, "CompuMethod");
        return std::any_of(methods.begin(), methods.end(), [&](QOB::Object const& method) {
            return isNamed(ClassObject(method), *query_.method);
        });
    }

    bool has(ClassObject const& object, PropertyFilter const& filter) {
        Values const values = valuesOf(object, filter.property);
        return std::any_of(values.begin(), values.end(), [&](QOB::Object const& value) {
            return !filter.value || isValue(value, *filter.value);
        });
    }

    bool isValue(QOB::Object const& value, std::string const& pattern) {
        switch (model::kindOf(value)) {
        case model::ValueKind::nothing:
            return false;
        case model::ValueKind::reference:
            return isNamed(ClassObject(value), pattern);
        case model::ValueKind::number:
        case model::ValueKind::integer:
            if (auto const number = numberIn(pattern)) {
                return number == numberIn(model::textOf(value, addresses_));
            }
            break;
        default:
            break;
        }
        return model::matchesText(pattern, model::textOf(value, addresses_));
    }

    bool isUser(ClassObject const& object) const {
        auto const& used = references_.usedBy(object);
        return std::any_of(
            used.begin(), used.end(), [&](void const* each) { return targets_.contains(each); });
    }

    Query const& query_;
    model::Addresses addresses_;
    References references_;
    std::unordered_set<void const*> used_;
    bool isUserKnown_ = false;
    std::unordered_set<void const*> targets_;
};

} // namespace

Result find(QOB::Model const& model, Query const& query) {
    return Search(model, query).run();
}

} // namespace velum::find
