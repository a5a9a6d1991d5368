#include "comparison.h"

#include "qob/qob/string.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace QOB::internal {

bool haveSameClass(ClassObject const& left, ClassObject const& right) {
    char const* const one = left.getLumvoName(false);
    char const* const other = right.getLumvoName(false);
    return one == other || std::string_view(one) == other;
}

/// Whether the values are objects, and those at one place of the lists are a pair.
bool Comparison::arePairs(Values const& lefts, Values const& rights) const {
    return std::equal(lefts.begin(),
                      lefts.end(),
                      rights.begin(),
                      rights.end(),
                      [this](Object const& left, Object const& right) {
                          ClassObject const one(left);
                          return one.get() != nullptr && pairs_.arePair(one, ClassObject(right));
                      });
}

std::vector<Key> Comparison::leftKeys(Values const& values) const {
    std::vector<Key> keys;
    for (Object const& value : values) {
        keys.push_back(pairs_.leftKey(value));
    }
    return keys;
}
std::vector<Key> Comparison::rightKeys(Values const& values) const {
    std::vector<Key> keys;
    for (Object const& value : values) {
        keys.push_back(pairs_.rightKey(value));
    }
    return keys;
}

void Comparison::compareAttribute(Attribute const& attribute,
                                  ClassObject const& left,
                                  ClassObject const& right) {
    if (pairs_.areSeenSame(attribute, left, right)) {
        return;
    }
    Values const leftValues = attribute.valuesOf(left);
    Values const rightValues = attribute.valuesOf(right);
    if (arePairs(leftValues, rightValues) || areSameValues(leftValues, rightValues)) {
        return;
    }
    std::vector<Key> lefts = leftKeys(leftValues);
    std::vector<Key> rights = rightKeys(rightValues);
    if (lefts == rights) {
        return;
    }
    std::sort(lefts.begin(), lefts.end());
    std::sort(rights.begin(), rights.end());
    bool const isOfOrder = lefts == rights;
    if (doesOrderCount_ || attribute.isOrdered || !isOfOrder) {
        differences_.push_back({isOfOrder ? DifferenceKind::Order : DifferenceKind::Values,
                                left,
                                right,
                                attribute.name,
                                leftValues,
                                rightValues});
    }
}

void Comparison::compareParts(Attribute const& attribute,
                              ClassObject const& left,
                              ClassObject const& right) {
    Values const leftValues = attribute.valuesOf(left);
    Values const rightValues = attribute.valuesOf(right);
    if (arePairs(leftValues, rightValues)) {
        return;
    }
    std::vector<Key> lefts;
    for (Object const& value : leftValues) {
        if (pairs_.hasLeft(ClassObject(value))) {
            lefts.push_back(pairs_.leftKey(value));
        }
    }
    std::vector<Key> rights;
    for (Object const& value : rightValues) {
        if (pairs_.hasRight(ClassObject(value))) {
            rights.push_back(pairs_.rightKey(value));
        }
    }
    auto const add = [&](DifferenceKind kind) {
        differences_.push_back({kind, left, right, attribute.name, leftValues, rightValues});
    };
    if (lefts.size() != leftValues.size() || rights.size() != rightValues.size()) {
        add(DifferenceKind::Values);
    }
    if (lefts != rights) {
        add(DifferenceKind::Order);
    }
}

std::vector<Difference> Comparison::takeDifferences() {
    return std::exchange(differences_, {});
}

} // namespace QOB::internal
