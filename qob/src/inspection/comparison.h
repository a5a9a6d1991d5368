#pragma once

#include "pairing.h"
#include "qob/qob/attributes.h"
#include "qob/qob/compare.h"
#include "qob/qob/object.h"

#include <vector>

namespace QOB::internal {

/// Whether the classes of two objects have one name.
bool haveSameClass(ClassObject const& left, ClassObject const& right);

/// Looks at the values of objects that are a pair and collects in what they differ.
class Comparison {
public:
    using Values = std::vector<Object>;

    /// `doesOrderCount`: for every property, not only for those that are ordered.
    Comparison(bool areInTwoModels, bool doesOrderCount)
        : pairs_(areInTwoModels), doesOrderCount_(doesOrderCount) {}

    Pairs& pairs() { return pairs_; }
    Pairs const& pairs() const { return pairs_; }

    void
    compareAttribute(Attribute const& attribute, ClassObject const& left, ClassObject const& right);

    /// Whether all parts have partners, and whether those that have stand in the same order.
    void
    compareParts(Attribute const& attribute, ClassObject const& left, ClassObject const& right);

    /// An object that is on one side only; the other one is empty.
    void addExistence(ClassObject const& left, ClassObject const& right) {
        differences_.push_back({DifferenceKind::Existence, left, right});
    }
    void addClass(ClassObject const& left, ClassObject const& right) {
        differences_.push_back({DifferenceKind::Class, left, right});
    }

    std::vector<Difference> takeDifferences();

private:
    bool arePairs(Values const& lefts, Values const& rights) const;
    std::vector<Key> leftKeys(Values const& values) const;
    std::vector<Key> rightKeys(Values const& values) const;

    Pairs pairs_;
    bool doesOrderCount_;
    std::vector<Difference> differences_;
};

} // namespace QOB::internal
