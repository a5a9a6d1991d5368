#include "diff/contents.h"

#include "model/objects.h"
#include "model/values.h"

#include <utility>

namespace velum::diff {

using model::ValueKind;

namespace {

/// So that no two lists of texts look the same.
std::string delimited(std::string const& text) {
    return std::to_string(text.size()) + ':' + text;
}

} // namespace

int Contents::of(QOB::ClassObject const& lone) {
    std::vector<Open> open;
    std::unordered_map<void const*, bool> entered;
    auto const enter = [&](QOB::ClassObject const& object) {
        if (!known_.contains(object.get()) && entered.emplace(object.get(), true).second) {
            open.push_back({object, neededFor(object)});
        }
    };
    enter(lone);
    while (!open.empty()) {
        if (open.back().needed.empty()) {
            QOB::ClassObject const done = open.back().object;
            known_.emplace(done.get(), numberOf(description(done)));
            open.pop_back();
        } else {
            QOB::ClassObject const next = open.back().needed.back();
            open.back().needed.pop_back();
            enter(next);
        }
    }
    return known_.at(lone.get());
}

bool Contents::isCounted(QOB::Attribute const& attribute) const {
    return !attribute.isWayToOwner && !attribute.isOtherEnd && attribute.name != "ExternalId" &&
           !ignored_.contains(attribute.name);
}

QOB::ClassObject Contents::loneAround(QOB::ClassObject const& object) const {
    QOB::ClassObject around = object;
    while (around.get() != nullptr && !lone_.contains(around.get())) {
        around = model::Addresses::containerOf(around);
    }
    return around;
}

std::vector<QOB::ClassObject> Contents::neededFor(QOB::ClassObject const& lone) {
    std::vector<QOB::ClassObject> needed;
    std::vector<QOB::ClassObject> pending{lone};
    QOB::Attributes& attributes = sideOf(lone).attributes();
    while (!pending.empty()) {
        QOB::ClassObject const object = pending.back();
        pending.pop_back();
        for (QOB::Attribute const& attribute : attributes.of(object)) {
            if (!isCounted(attribute)) {
                continue;
            }
            for (QOB::Object const& value : attribute.valuesOf(object)) {
                QOB::ClassObject const target(value);
                if (target.get() == nullptr) {
                    continue;
                }
                if (model::Addresses::isPart(attribute, target, object)) {
                    pending.push_back(target);
                } else if (QOB::ClassObject const around = loneAround(target);
                           around.get() != nullptr) {
                    needed.push_back(around);
                }
            }
        }
    }
    return needed;
}

int Contents::numberOf(std::string const& description) {
    return numbers_.emplace(description, static_cast<int>(numbers_.size())).first->second;
}

std::string Contents::description(QOB::ClassObject const& lone) {
    std::string text;
    describe(lone, lone, text);
    return text;
}

void Contents::describe(QOB::ClassObject const& object,
                        QOB::ClassObject const& lone,
                        std::string& text) {
    model::Addresses& addresses = sideOf(lone);
    std::string const ownName = model::nameOf(lone);
    text += delimited(std::string(model::classOf(object))) + '{';
    for (QOB::Attribute const& attribute : addresses.attributes().of(object)) {
        bool const isOwnName = object.get() == lone.get() && attribute.name == "Name";
        if (isOwnName || !isCounted(attribute)) {
            continue;
        }
        std::vector<QOB::Object> const values = attribute.valuesOf(object);
        if (values.empty()) {
            continue;
        }
        text += delimited(attribute.name) + '(';
        for (QOB::Object const& value : values) {
            ValueKind const kind = model::kindOf(value);
            std::string const valueText =
                kind == ValueKind::reference ? std::string() : model::textOf(value, addresses);
            QOB::ClassObject const target(value);
            if (kind == ValueKind::reference &&
                model::Addresses::isPart(attribute, target, object)) {
                describe(target, lone, text);
            } else if (kind == ValueKind::reference) {
                text += referenceText(target, lone);
            } else if (kind == ValueKind::text && valueText == ownName) {
                text += '='; // a part that is named after the whole
            } else {
                text += std::to_string(static_cast<int>(kind)) + delimited(valueText);
            }
        }
        text += ')';
    }
    text += '}';
}

std::string Contents::referenceText(QOB::ClassObject const& target, QOB::ClassObject const& lone) {
    model::Addresses& addresses = sideOf(lone);
    QOB::ClassObject const around = loneAround(target);
    if (around.get() == nullptr) {
        return '>' + delimited(addresses.of(target));
    }
    std::string const inside = delimited(addresses.place(target, around));
    if (around.get() == lone.get()) {
        return '@' + inside;
    }
    auto const found = known_.find(around.get());
    return found != known_.end() ? '#' + std::to_string(found->second) + inside
                                 : '?' + delimited(std::string(model::classOf(around))) + inside;
}

} // namespace velum::diff
