#include "check/rules.h"

#include "check/mandatory.h"
#include "dictionary/number.h"
#include "model/objects.h"

#include <cstdint>
#include <map>
#include <utility>

namespace velum::check {

namespace types = Zorvane::metamodel::types;
using dictionary::numberText;

namespace {

/// Where the issues of one object go.
struct Sink {
    const std::string& path;
    std::vector<Issue>& issues;

    void add(std::string_view rule, Severity severity, std::string text) const {
        issues.push_back({path, rule, severity, std::move(text)});
    }
};

void checkRange(const types::Real& type, const Sink& sink) {
    if (!type.hasMinValue() || !type.hasMaxValue()) {
        return;
    }
    const double min = type.getMinValue();
    const double max = type.getMaxValue();
    const bool isOpen =
        type.isMinOpen() == QOB::Boolean(true) || type.isMaxOpen() == QOB::Boolean(true);
    if (min > max) {
        sink.add("empty-range",
                 Severity::error,
                 "The minimum " + numberText(min) + " is above the maximum " + numberText(max) +
                     ".");
    } else if (min == max && isOpen) {
        sink.add("empty-range",
                 Severity::error,
                 "The range from " + numberText(min) + " to itself excludes it.");
    }
}

void checkLiterals(const types::Enumeration& type, const Sink& sink) {
    std::map<int, std::string> first;
    for (const types::EnumerationLiteral literal : type.getOwnedLiterals()) {
        const QOB::Integer value = literal.getValue();
        if (!value.isValid()) {
            continue;
        }
        const std::string name = literal.getName();
        const auto [entry, isNew] = first.emplace(static_cast<int>(value), name);
        if (!isNew) {
            sink.add("shared-value",
                     Severity::warning,
                     "The literals " + entry->second + " and " + name + " share the value " +
                         std::to_string(entry->first) + ".");
        }
    }
}

void checkFactor(double factor, const char* what, const Sink& sink) {
    if (factor == 0.0) {
        sink.add("zero-factor", Severity::error, std::string(what) + " is 0.");
    }
}

void checkMethod(const types::CompuMethod& method, const Sink& sink) {
    using Category = types::CompuMethodCategory;
    const Category category = method.getCategory();
    const bool isFunction = category == Category(Category::Linear) ||
                            category == Category(Category::RatFunc) ||
                            category == Category(Category::LinearAndTextTable);
    if (isFunction && (method.getCalToInternalCompuNumerators().empty() ||
                       method.getCalToInternalCompuDenominators().empty())) {
        sink.add("no-coefficients",
                 Severity::warning,
                 "A method of category " + std::string(category.toString()) +
                     " has no coefficients.");
    }
}

/// The product of the sizes, none if one is unknown or there are no sizes.
std::int64_t productOf(const QOB::Sequence<QOB::Integer>& sizes) {
    constexpr std::int64_t most = std::int64_t{1} << 40U;
    std::int64_t product = sizes.empty() ? -1 : 1;
    for (const QOB::Integer size : sizes) {
        if (!size.isValid() || static_cast<int>(size) < 0) {
            return -1;
        }
        product = std::min(product * static_cast<int>(size), most);
    }
    return product;
}

void checkSizes(const types::ApplicationValueSpecification& value, const Sink& sink) {
    const std::int64_t expected = productOf(value.getDimensionses());
    const std::int64_t held = value.getVs().size();
    if (expected >= 0 && expected != held) {
        sink.add("size-mismatch",
                 Severity::warning,
                 "The dimensions tell " + std::to_string(expected) + " values, there are " +
                     std::to_string(held) + ".");
    }
}

void checkObject(const QOB::ClassObject& object, const Sink& sink) {
    checkMandatory(object, sink.path, sink.issues);
    if (const types::Real type(object); type.isValid()) {
        checkRange(type, sink);
        if (const types::Enumeration enumeration(object); enumeration.isValid()) {
            checkLiterals(enumeration, sink);
        } else if (const types::FixedPoint fixed(object); fixed.isValid()) {
            checkFactor(fixed.getSlope(), "The slope of the fixed point type", sink);
        }
    } else if (const types::Unit unit(object); unit.isValid()) {
        checkFactor(unit.getConvFactor(), "The conversion factor of the unit", sink);
    } else if (const types::CompuMethod method(object); method.isValid()) {
        checkMethod(method, sink);
    } else if (const types::ApplicationValueSpecification value(object); value.isValid()) {
        checkSizes(value, sink);
    }
}

} // namespace

std::vector<Issue> checkModel(const QOB::Model& model) {
    std::vector<Issue> issues;
    std::vector<std::pair<QOB::ClassObject, std::string>> pending;
    for (const QOB::ClassObject& free : model::freeObjects(model)) {
        pending.emplace_back(free, "");
        while (!pending.empty()) {
            const auto [object, around] = pending.back();
            pending.pop_back();
            const std::string own = model::pathOf(object);
            const std::string& path = own.empty() ? around : own;
            checkObject(object, {path, issues});
            const auto contained = model::containedIn(object);
            for (auto part = contained.rbegin(); part != contained.rend(); ++part) {
                pending.emplace_back(*part, path);
            }
        }
    }
    return issues;
}

} // namespace velum::check
