#include "qob/qob/compare.h"

#include "attributes.h"
#include "comparison.h"
#include "model/modelcore.h"
#include "modelcomparison.h"
#include "pairing.h"
#include "qob/qob/objecttext.h"

#include <ostream>
#include <utility>

namespace QOB {

namespace {

using internal::Comparison;
using internal::haveSameClass;
using NSInterface::ClassObjectIntf;
using Pair = std::pair<ClassObject, ClassObject>;
using Values = std::vector<Object>;

/// Pairs two objects and all that they contain.
class TreePairs {
public:
    TreePairs(internal::Pairs& pairs, Attributes& attributes)
        : pairs_(pairs), attributes_(attributes) {}

    std::vector<Pair> of(ClassObject const& left, ClassObject const& right) {
        std::vector<Pair> all;
        std::vector<Pair> open{{left, right}};
        while (!open.empty()) {
            auto const next = open.back();
            open.pop_back();
            if (!pairs_.add(next.first, next.second)) {
                continue;
            }
            all.push_back(next);
            if (haveSameClass(next.first, next.second)) {
                std::vector<Pair> const parts = partsOf(next);
                open.insert(open.end(), parts.rbegin(), parts.rend());
            }
        }
        return all;
    }

private:
    std::vector<Pair> partsOf(Pair const& owners) {
        std::vector<Pair> parts;
        for (Attribute const& attribute : attributes_.of(owners.first)) {
            if (attribute.ownsObjects) {
                std::vector<Pair> const found = internal::pairsOf(
                    attribute.valuesOf(owners.first), attribute.valuesOf(owners.second));
                parts.insert(parts.end(), found.begin(), found.end());
            }
        }
        return parts;
    }

    internal::Pairs& pairs_;
    Attributes& attributes_;
};

ClassObjectIntf const* stateOf(ClassObject const& object) {
    ClassObjectIntf const* const self = object.get();
    return self->getReadDeviantI(object.getDeviant(), self);
}

/// Looks at all objects as they are seen in two deviants of one model.
std::vector<Difference>
compareStates(internal::ModelCore const& core, Deviant leftDeviant, Deviant rightDeviant) {
    Comparison comparison(false, false);
    Attributes attributes;
    Attribute const container = internal::containerAttribute();
    core.forEachObject([&](ClassObjectIntf* object) {
        ClassObject const left(object, leftDeviant);
        ClassObject const right(object, rightDeviant);
        bool const isLeft = left.isValid();
        bool const isRight = right.isValid();
        if (object == core.model()) { // It lists what is told of each object.
            return;
        }
        if (isLeft != isRight) {
            comparison.addExistence(isLeft ? left : ClassObject(), isRight ? right : ClassObject());
        } else if (isLeft && stateOf(left) != stateOf(right)) {
            for (Attribute const& attribute : attributes.of(left)) {
                comparison.compareAttribute(attribute, left, right);
            }
            comparison.compareAttribute(container, left, right);
        }
    });
    return comparison.takeDifferences();
}

void printValues(std::ostream& out, Values const& values) {
    char const* between = " ";
    for (Object const& value : values) {
        out << std::exchange(between, ", ") << toText(value);
    }
    if (values.empty()) {
        out << " nothing";
    }
}

} // namespace

std::ostream& operator<<(std::ostream& out, Difference const& difference) {
    if (!difference.property.isValid()) {
        return out << toText(difference.left) << " -> " << toText(difference.right);
    }
    out << toText(difference.left) << ": " << difference.property.view() << ':';
    printValues(out, difference.leftValues);
    out << " ->";
    printValues(out, difference.rightValues);
    return out;
}

std::vector<Difference> compare(ClassObject const& left, ClassObject const& right) {
    // Raise for an object that isn't there.
    Model const leftModel = left->getModelQOB(left.getDeviant());
    Model const rightModel = right->getModelQOB(right.getDeviant());
    Comparison comparison(leftModel != rightModel, false);
    Attributes attributes;
    for (auto const& [one, other] : TreePairs(comparison.pairs(), attributes).of(left, right)) {
        if (!haveSameClass(one, other)) {
            comparison.addClass(one, other);
            continue;
        }
        for (Attribute const& attribute : attributes.of(one)) {
            if (!attribute.isWayToOwner) {
                comparison.compareAttribute(attribute, one, other);
            }
        }
    }
    return comparison.takeDifferences();
}

std::vector<Difference> compare(Model const& left, Model const& right) {
    internal::ModelCore const& core = internal::ModelCore::of(left.getDeviant());
    internal::ModelCore const& other = internal::ModelCore::of(right.getDeviant());
    return &core == &other ? compareStates(core, left.getDeviant(), right.getDeviant())
                           : internal::ModelComparison().compare(left, right);
}

} // namespace QOB
