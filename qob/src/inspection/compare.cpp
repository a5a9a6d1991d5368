#include "qob/qob/compare.h"

#include "attributes.h"
#include "model/modelcore.h"
#include "pairing.h"
#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/objecttext.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace QOB {

namespace {

using internal::Key;
using internal::Pairs;
using internal::Partners;
using NSInterface::ClassObjectIntf;
using Pair = std::pair<ClassObject, ClassObject>;
using Values = std::vector<Object>;

bool haveSameClass(ClassObject const& left, ClassObject const& right) {
    return std::string_view(left.getLumvoName(false)) == right.getLumvoName(false);
}

/// The objects of a model that nothing contains.
struct FreeObjects {
    std::vector<ClassObject> known;           ///< By an external id or a name.
    std::vector<ClassObject> anonymous;       ///< With neither.
    std::unordered_set<void const*> referred; ///< The anonymous ones to which something refers.
};

/// Whether the values are objects that are known by this property, and not by one of theirs.
bool isOwnReference(Attribute const& attribute) {
    return attribute.isReference && !attribute.isWayToOwner && !attribute.isOtherEnd;
}

/// False if there are none.
bool addAnonymous(Values const& values, std::unordered_set<void const*>& objects) {
    bool isAny = false;
    for (Object const& value : values) {
        ClassObject const object(value);
        if (object.isValid() && internal::isAnonymous(object)) {
            objects.insert(object.get());
            isAny = true;
        }
    }
    return isAny;
}

/// Looks at objects in pairs and collects in what they differ.
class Comparison {
public:
    explicit Comparison(bool areInTwoModels = false, bool doesOrderCount = false)
        : pairs_(areInTwoModels), doesOrderCount_(doesOrderCount) {}

    /// Pairs two objects and all that they contain, then looks at each pair.
    void compareTrees(ClassObject const& left, ClassObject const& right) {
        for (auto const& [one, other] : pairTrees(left, right)) {
            compareAttributes(one, other);
        }
    }

    /// Looks at one object as it is seen on both sides.
    void compareStates(ClassObject const& left, ClassObject const& right) {
        bool const isLeft = left.isValid();
        bool const isRight = right.isValid();
        if (isLeft != isRight) {
            addExistence(isLeft ? left : ClassObject(), isRight ? right : ClassObject());
        } else if (isLeft && stateOf(left) != stateOf(right)) {
            for (Attribute const& attribute : attributes_.of(left)) {
                compareAttribute(attribute, left, right);
            }
            compareAttribute(container_, left, right);
        }
    }

    /// Pairs the objects that nothing contains, and all that they contain, then looks at each pair.
    void compareModels(FreeObjects const& left, FreeObjects const& right) {
        std::vector<Pair> all;
        pairObjects(left.known, right.known, internal::IdentityInModel(), all);
        std::size_t const withSameIds = all.size();
        pairWhatTheyHave(all, 0);
        // What something refers to has its place in the model: nothing else is its partner.
        std::size_t const known = all.size();
        pairObjects(unplaced(left), unplaced(right), internal::IdentityInModel(), all);
        pairWhatTheyHave(all, known);
        addReferredWithoutPartner(left, right);
        std::vector<Difference> const existences = takeDifferences();
        for (std::size_t i = 0; i != all.size(); ++i) {
            compareMembers(all[i].first, all[i].second, i < withSameIds);
        }
        differences_.insert(differences_.end(), existences.begin(), existences.end());
    }

    /// Sorts out the objects of a model that nothing contains.
    FreeObjects freeObjects(internal::ModelCore const& core, Deviant deviant) {
        FreeObjects found;
        forEachIn(core, deviant, [&](ClassObject const& object) {
            if (!object.hasContainerQOB()) {
                (internal::isAnonymous(object) ? found.anonymous : found.known).push_back(object);
            }
            noteUsed(object);
        });
        if (!found.anonymous.empty()) {
            forEachIn(core, deviant, [&](ClassObject const& object) {
                for (Attribute const& attribute : attributes_.of(object)) {
                    if (isOwnReference(attribute) && isUsed(attribute) &&
                        addAnonymous(attribute.valuesOf(object), found.referred)) {
                        waysToAnonymous_.insert(&attribute);
                    }
                }
            });
        }
        return found;
    }

    std::vector<Difference> takeDifferences() { return std::exchange(differences_, {}); }

private:
    template <class Action>
    static void forEachIn(internal::ModelCore const& core, Deviant deviant, Action const& action) {
        core.forEachObject([&](ClassObjectIntf* object) {
            ClassObject const handle(object, deviant);
            if (object != core.model() && handle.isValid()) {
                action(handle);
            }
        });
    }

    void noteUsed(ClassObject const& object) {
        for (Attribute const& attribute : attributes_.of(object)) {
            bool const hasObjects = attribute.ownsObjects || isOwnReference(attribute);
            if (hasObjects && !isUsed(attribute) && internal::hasValues(attribute, object)) {
                used_.insert(&attribute);
            }
        }
    }

    static ClassObjectIntf const* stateOf(ClassObject const& object) {
        ClassObjectIntf const* const self = object.get();
        return self->getReadDeviantI(object.getDeviant(), self);
    }

    std::vector<Pair> pairTrees(ClassObject const& left, ClassObject const& right) {
        std::vector<Pair> all;
        std::vector<Pair> open{{left, right}};
        std::vector<Pair> parts;
        while (!open.empty()) {
            auto const next = open.back();
            open.pop_back();
            if (!pairs_.add(next.first, next.second)) {
                continue;
            }
            all.push_back(next);
            if (!haveSameClass(next.first, next.second)) {
                continue;
            }
            parts.clear();
            for (Attribute const& attribute : attributes_.of(next.first)) {
                if (attribute.ownsObjects) {
                    std::vector<Pair> const found = internal::pairsOf(
                        attribute.valuesOf(next.first), attribute.valuesOf(next.second));
                    parts.insert(parts.end(), found.begin(), found.end());
                }
            }
            open.insert(open.end(), parts.rbegin(), parts.rend());
        }
        return all;
    }

    static ClassObject asObject(Object const& value) { return ClassObject(value); }
    static ClassObject const& asObject(ClassObject const& object) { return object; }

    /// Appends those that are a pair; reports the others.
    template <class Objects, class Identity>
    void pairObjects(Objects const& lefts,
                     Objects const& rights,
                     Identity const& identity,
                     std::vector<Pair>& all) {
        // Two models mostly have the same objects in the same order.
        std::size_t next = 0;
        for (; next != std::min(lefts.size(), rights.size()); ++next) {
            auto const& left = asObject(lefts[next]);
            auto const& right = asObject(rights[next]);
            if (!identity.areSame(left, right) || !pairs_.add(left, right)) {
                break;
            }
            all.emplace_back(left, right);
        }
        pairByIdentity(
            std::span(lefts).subspan(next), std::span(rights).subspan(next), identity, all);
    }

    template <class Object, class Identity>
    void pairByIdentity(std::span<Object const> lefts,
                        std::span<Object const> rights,
                        Identity const& identity,
                        std::vector<Pair>& all) {
        Partners partners;
        for (auto const& value : rights) {
            auto const& right = asObject(value);
            partners.add(identity(right), right);
        }
        for (auto const& value : lefts) {
            auto const& left = asObject(value);
            ClassObject const right = partners.take(identity(left));
            if (right.get() == nullptr) {
                addExistence(left, {});
            } else if (pairs_.add(left, right)) {
                all.emplace_back(left, right);
            }
        }
        for (auto const& value : rights) {
            if (!pairs_.hasRight(ClassObject(value))) {
                addExistence({}, ClassObject(value));
            }
        }
    }

    /// Pairs the parts of pairs, and the anonymous objects that they refer to.
    void pairWhatTheyHave(std::vector<Pair>& all, std::size_t next) {
        for (; next != all.size(); ++next) {
            Pair const owners = all[next]; // `all` grows
            if (haveSameClass(owners.first, owners.second)) {
                pairParts(owners, all);
                pairAnonymous(owners, all);
            }
        }
    }

    /// The anonymous objects to which nothing refers.
    static std::vector<ClassObject> unplaced(FreeObjects const& side) {
        std::vector<ClassObject> rest;
        for (ClassObject const& object : side.anonymous) {
            if (!side.referred.contains(object.get())) {
                rest.push_back(object);
            }
        }
        return rest;
    }

    /// Reports the anonymous objects to which something refers, but nothing that has a partner.
    void addReferredWithoutPartner(FreeObjects const& left, FreeObjects const& right) {
        for (ClassObject const& object : left.anonymous) {
            if (left.referred.contains(object.get()) && !pairs_.hasLeft(object)) {
                addExistence(object, {});
            }
        }
        for (ClassObject const& object : right.anonymous) {
            if (right.referred.contains(object.get()) && !pairs_.hasRight(object)) {
                addExistence({}, object);
            }
        }
    }

    /// Whether an object of either model has other objects by it. Most classes have properties that
    /// none of the objects uses.
    bool isUsed(Attribute const& attribute) const { return used_.contains(&attribute); }

    void pairAnonymous(Pair const& users, std::vector<Pair>& all) {
        for (Attribute const& attribute : attributes_.of(users.first)) {
            if (!waysToAnonymous_.contains(&attribute)) {
                continue;
            }
            Values const lefts = attribute.valuesOf(users.first);
            Values const rights = attribute.valuesOf(users.second);
            for (std::size_t i = 0; i != std::min(lefts.size(), rights.size()); ++i) {
                ClassObject const left(lefts[i]);
                ClassObject const right(rights[i]);
                if (left.isValid() && right.isValid() && internal::isAnonymous(left) &&
                    internal::isAnonymous(right) && !pairs_.hasRight(right) &&
                    pairs_.add(left, right)) {
                    all.emplace_back(left, right);
                }
            }
        }
    }

    void pairParts(Pair const& owners, std::vector<Pair>& all) {
        for (Attribute const& attribute : attributes_.of(owners.first)) {
            if (!attribute.ownsObjects || !isUsed(attribute)) {
                continue;
            }
            Values const lefts = attribute.valuesOf(owners.first);
            Values const rights = attribute.valuesOf(owners.second);
            if (!lefts.empty() || !rights.empty()) {
                pairObjects(lefts, rights, internal::IdentityInOwner{attribute}, all);
            }
        }
    }

    void compareAttributes(ClassObject const& left, ClassObject const& right) {
        if (!haveSameClass(left, right)) {
            differences_.push_back({DifferenceKind::Class, left, right});
            return;
        }
        for (Attribute const& attribute : attributes_.of(left)) {
            if (!attribute.isWayToOwner) {
                compareAttribute(attribute, left, right);
            }
        }
    }

    /// The same in two models.
    void compareMembers(ClassObject const& left, ClassObject const& right, bool haveSameId) {
        if (!haveSameClass(left, right)) {
            differences_.push_back({DifferenceKind::Class, left, right});
            return;
        }
        for (Attribute const& attribute : attributes_.of(left)) {
            bool const hasObjects = attribute.ownsObjects || isOwnReference(attribute);
            if ((hasObjects && !isUsed(attribute)) ||
                (haveSameId && internal::isExternalId(attribute))) {
                continue;
            }
            if (attribute.ownsObjects) {
                compareParts(attribute, left, right);
            } else if (!attribute.isWayToOwner && !attribute.isOtherEnd) {
                compareAttribute(attribute, left, right);
            }
        }
    }

    /// Whether the values are objects, and those at one place of the lists are a pair.
    bool arePairs(Values const& lefts, Values const& rights) const {
        return std::equal(lefts.begin(),
                          lefts.end(),
                          rights.begin(),
                          rights.end(),
                          [this](Object const& left, Object const& right) {
                              ClassObject const one(left);
                              return one.get() != nullptr &&
                                     pairs_.arePair(one, ClassObject(right));
                          });
    }

    std::vector<Key> leftKeys(Values const& values) const {
        std::vector<Key> keys;
        for (Object const& value : values) {
            keys.push_back(pairs_.leftKey(value));
        }
        return keys;
    }
    std::vector<Key> rightKeys(Values const& values) const {
        std::vector<Key> keys;
        for (Object const& value : values) {
            keys.push_back(pairs_.rightKey(value));
        }
        return keys;
    }

    void compareAttribute(Attribute const& attribute,
                          ClassObject const& left,
                          ClassObject const& right) {
        if (pairs_.areSeenSame(attribute, left, right)) {
            return;
        }
        Values const leftValues = attribute.valuesOf(left);
        Values const rightValues = attribute.valuesOf(right);
        if (arePairs(leftValues, rightValues) || internal::areSameValues(leftValues, rightValues)) {
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

    /// Whether all parts have partners, and whether those that have stand in the same order.
    void
    compareParts(Attribute const& attribute, ClassObject const& left, ClassObject const& right) {
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

    void addExistence(ClassObject const& left, ClassObject const& right) {
        differences_.push_back({DifferenceKind::Existence, left, right});
    }

    Pairs pairs_;
    bool doesOrderCount_; ///< For every property, not only for those that are ordered.
    Attributes attributes_;
    // In two models:
    boost::unordered_flat_set<Attribute const*> used_; ///< See `isUsed`.
    boost::unordered_flat_set<Attribute const*> waysToAnonymous_;
    Attribute container_ = internal::containerAttribute();
    std::vector<Difference> differences_;
};

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
    Comparison comparison(leftModel != rightModel);
    comparison.compareTrees(left, right);
    return comparison.takeDifferences();
}

std::vector<Difference> compare(Model const& left, Model const& right) {
    internal::ModelCore const& core = internal::ModelCore::of(left.getDeviant());
    internal::ModelCore const& other = internal::ModelCore::of(right.getDeviant());
    bool const areInTwoModels = &core != &other;
    Comparison comparison(areInTwoModels, areInTwoModels);
    if (areInTwoModels) {
        comparison.compareModels(comparison.freeObjects(core, left.getDeviant()),
                                 comparison.freeObjects(other, right.getDeviant()));
        return comparison.takeDifferences();
    }
    core.forEachObject([&](ClassObjectIntf* object) {
        // The model itself lists what is told of each object.
        if (object != core.model()) {
            comparison.compareStates({object, left.getDeviant()}, {object, right.getDeviant()});
        }
    });
    return comparison.takeDifferences();
}

} // namespace QOB
