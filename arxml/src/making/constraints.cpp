#include "making/constraints.h"

#include <cmath>
#include <utility>
#include <velum_arxml/notation/number.h>
#include <velum_arxml/notation/tool_notes.h>

namespace velum::arxml {

namespace {

/// Of several rules the one of the lowest level; a rule without a level counts as level 0.
Element ruleOf(Element constraint) {
    Element lowest;
    std::int32_t lowestLevel = 0;
    for (const Element rule : constraint.child(element::dataConstrRules).children()) {
        if (!rule.is(element::dataConstrRule)) {
            continue;
        }
        const std::int32_t level =
            readWholeNumber(rule.child(element::constrLevel).text()).value.value_or(0);
        if (!lowest || level < lowestLevel) {
            lowest = rule;
            lowestLevel = level;
        }
    }
    return lowest;
}

} // namespace

void Constraints::build(Catalogue const& catalogue) {
    for (const Element constraint : catalogue.ofKind(element::dataConstr)) {
        const auto object = objects_.makeOf<types::DataConstr>(constraint);
        made_.add(constraint, object);
        plans_.emplace(constraint.index(), read(constraint));
        units_.setUnit(object,
                       ruleOf(constraint).child(element::physConstrs).child(element::unitRef));
    }
}

Constraints::Plan Constraints::read(Element constraint) {
    const Element rule = ruleOf(constraint);
    return {readLimits(rule.child(element::internalConstrs)),
            readLimits(rule.child(element::physConstrs))};
}

std::optional<Constraints::Limits> Constraints::readLimits(Element constraints) {
    const Element lower = constraints.child(element::lowerLimit);
    const Element upper = constraints.child(element::upperLimit);
    if (!lower && !upper) {
        return std::nullopt;
    }
    return Limits{readLimit(lower), readLimit(upper)};
}

Constraints::Limit Constraints::readLimit(Element element) {
    Limit limit;
    limit.element = element;
    const std::string_view interval = element.attribute("INTERVAL-TYPE").value_or("CLOSED");
    if (!element || interval == "INFINITE") {
        return limit;
    }
    const RealNumber number = readRealNumber(element.text());
    if (number.fault) {
        context_.refuseNumber(
            element, *number.fault, "The limit " + bracketed(element.text()) + " is no number.");
        return limit;
    }
    if (!std::isfinite(*number.value)) {
        return limit;
    }
    if (number.isRounded) {
        context_.note(element,
                      Reason::outOfRange,
                      "The number " + bracketed(element.text()) + " is held rounded.");
        limit.exact = element.text();
    }
    limit.value = number.value;
    limit.isOpen = interval == "OPEN";
    return limit;
}

void Constraints::setBounds(types::Real const& type,
                            Element constraint,
                            bool isApplication,
                            std::optional<Element> method) {
    Plan const& plan = plans_.at(constraint.index());
    std::optional<Limits> limits = isApplication ? plan.physical : plan.internal;
    if (isApplication && !limits && plan.internal) {
        limits = throughMethod(*plan.internal, method);
    }
    if (!limits) {
        return;
    }
    const auto bound = [](Limit const& limit) {
        return limit.value ? QOB::Real(*limit.value) : QOB::Real();
    };
    type.setMinValue(bound(limits->lower));
    type.setIsMinOpen(QOB::Boolean(limits->lower.isOpen));
    type.setMaxValue(bound(limits->upper));
    type.setIsMaxOpen(QOB::Boolean(limits->upper.isOpen));
    if (!limits->lower.exact.empty()) {
        tool_note::set(type, tool_note::minValue, std::string(limits->lower.exact));
    }
    if (!limits->upper.exact.empty()) {
        tool_note::set(type, tool_note::maxValue, std::string(limits->upper.exact));
    }
    for (Limit const* limit : {&limits->lower, &limits->upper}) {
        if (limit->element && !context_.account.markedReason(limit->element)) {
            context_.account.consume(limit->element);
        }
    }
}

std::optional<Constraints::Limits> Constraints::throughMethod(Limits const& internal,
                                                              std::optional<Element> method) const {
    if (!method) {
        return std::nullopt;
    }
    if (!*method || methods_.at(*method).kind == CompuMethodPlan::Kind::identical) {
        return internal;
    }
    const std::optional<Line> line = methods_.lineOf(*method);
    if (!line) {
        return std::nullopt;
    }
    Limits physical = internal;
    for (Limit* limit : {&physical.lower, &physical.upper}) {
        if (limit->value) {
            limit->value = line->bias + line->slope * *limit->value;
            limit->exact = {};
        }
    }
    if (line->slope < 0.0) {
        std::swap(physical.lower, physical.upper);
    }
    return physical;
}

} // namespace velum::arxml
