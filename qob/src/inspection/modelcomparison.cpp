#include "modelcomparison.h"

#include "attributes.h"
#include "qob/kernel/containers/sequence/sequence.h"

#include <algorithm>

namespace QOB::internal {

namespace {

using NSInterface::ClassObjectIntf;
using Values = std::vector<Object>;

/// Whether the values are objects that are known by this property, and not by one of theirs.
bool isOwnReference(Attribute const& attribute) {
    return attribute.isReference && !attribute.isWayToOwner && !attribute.isOtherEnd;
}

bool hasObjects(Attribute const& attribute) {
    return attribute.ownsObjects || isOwnReference(attribute);
}

template <class Action>
void forEachIn(Model const& model, Action const& action) {
    Deviant const deviant = model.getDeviant();
    ModelCore const& core = ModelCore::of(deviant);
    core.forEachObject([&](ClassObjectIntf* object) {
        ClassObject const handle(object, deviant);
        if (object != core.model() && handle.isValid()) {
            action(handle);
        }
    });
}

/// Whether a class is another one or derived from it, to any depth.
bool isDerived(ImmutableClass const& derived, ImmutableClass const& base) {
    std::vector<ImmutableClass> open{derived};
    for (std::size_t next = 0; next != open.size(); ++next) {
        if (open[next] == base) {
            return true;
        }
        for (ImmutableClass const super : open[next].getSupers()) {
            if (std::find(open.begin(), open.end(), super) == open.end()) {
                open.push_back(super);
            }
        }
    }
    return false;
}

/// False only if it is known that the values are of other classes.
bool canReferTo(Attribute const& attribute, std::vector<ImmutableClass> const& classes) {
    ImmutableClass const type(attribute.property.getType());
    return std::any_of(classes.begin(), classes.end(), [&](ImmutableClass const& each) {
        return !each.isValid() || !type.isValid() || isDerived(each, type);
    });
}

ClassObject asObject(Object const& value) {
    return ClassObject(value);
}
ClassObject const& asObject(ClassObject const& object) {
    return object;
}

} // namespace

ClassUse::ClassUse(std::vector<Attribute> const& attributes) : all(&attributes) {
    for (Attribute const& attribute : attributes) {
        if (hasObjects(attribute)) {
            unused.push_back(&attribute);
        }
    }
}

void ClassUse::note(ClassObject const& object) {
    std::erase_if(unused,
                  [&](Attribute const* attribute) { return hasValues(*attribute, object); });
}

void ClassUse::sort(std::vector<ImmutableClass> const& anonymous) {
    for (Attribute const& attribute : *all) {
        bool const isForObjects = hasObjects(attribute);
        if (isForObjects && std::find(unused.begin(), unused.end(), &attribute) != unused.end()) {
            continue;
        }
        if (attribute.ownsObjects) {
            parts.push_back(&attribute);
        } else if (isForObjects && canReferTo(attribute, anonymous)) {
            references.push_back(&attribute);
        }
        if (isForObjects || (!attribute.isWayToOwner && !attribute.isOtherEnd)) {
            compared.push_back(&attribute);
        }
    }
}

ClassUse& ModelComparison::useOf(ClassObject const& object) {
    ImmutableClass const live = object.getMetaClass();
    if (lastUse_ == nullptr || live.get() == nullptr || live.get() != lastClass_) {
        std::vector<Attribute> const& attributes = attributes_.of(object);
        lastUse_ = &uses_.try_emplace(&attributes, attributes).first->second;
        lastClass_ = live.get();
    }
    return *lastUse_;
}

std::vector<Difference> ModelComparison::compare(Model const& left, Model const& right) {
    left_ = freeObjects(left);
    right_ = freeObjects(right);
    std::vector<ImmutableClass> const anonymous = classesOfAnonymous();
    for (auto& [attributes, use] : uses_) {
        use.sort(anonymous);
    }
    findReferred(left, left_);
    findReferred(right, right_);
    pairObjects(left_.known, right_.known, IdentityInModel());
    std::size_t const withSameIds = pairs_.size();
    pairWhatTheyHave(0);
    // What something refers to has its place in the model: nothing else is its partner.
    std::size_t const known = pairs_.size();
    pairObjects(unplaced(left_), unplaced(right_), IdentityInModel());
    pairWhatTheyHave(known);
    addReferredWithoutPartner();
    std::vector<Difference> const existences = comparison_.takeDifferences();
    for (std::size_t i = 0; i != pairs_.size(); ++i) {
        compareObjects(pairs_[i], i < withSameIds);
    }
    std::vector<Difference> differences = comparison_.takeDifferences();
    differences.insert(differences.end(), existences.begin(), existences.end());
    return differences;
}

/// Sorts out the objects of a model that nothing contains, and notes what its objects have.
ModelComparison::FreeObjects ModelComparison::freeObjects(Model const& model) {
    FreeObjects found;
    forEachIn(model, [&](ClassObject const& object) {
        if (!object.hasContainerQOB()) {
            if (isAnonymous(object)) {
                found.anonymous.push_back(object);
                found.isReferred.emplace(object.get(), false);
            } else {
                found.known.push_back(object);
            }
        }
        useOf(object).note(object);
    });
    return found;
}

/// Each once.
std::vector<ImmutableClass> ModelComparison::classesOfAnonymous() const {
    std::vector<ImmutableClass> classes;
    for (auto const* const side : {&left_, &right_}) {
        for (ClassObject const& object : side->anonymous) {
            ImmutableClass const live = object.getMetaClass();
            if (std::find(classes.begin(), classes.end(), live) == classes.end()) {
                classes.push_back(live);
            }
        }
    }
    return classes;
}

/// Whether any of the values is anonymous.
bool ModelComparison::FreeObjects::noteReferred(Values const& values) {
    bool isAny = false;
    for (Object const& value : values) {
        auto const place = isReferred.find(ClassObject(value).get());
        if (place != isReferred.end()) {
            place->second = true;
            isAny = true;
        }
    }
    return isAny;
}

void ModelComparison::findReferred(Model const& model, FreeObjects& found) {
    if (found.anonymous.empty()) {
        return;
    }
    forEachIn(model, [&](ClassObject const& object) {
        ClassUse& use = useOf(object);
        for (Attribute const* const attribute : use.references) {
            if (found.noteReferred(attribute->valuesOf(object)) &&
                std::find(use.toAnonymous.begin(), use.toAnonymous.end(), attribute) ==
                    use.toAnonymous.end()) {
                use.toAnonymous.push_back(attribute);
            }
        }
    });
}

/// Appends those that are a pair; reports the others. False if that isn't all of both lists, in
/// order.
template <class Objects, class Identity>
bool ModelComparison::pairObjects(Objects const& lefts,
                                  Objects const& rights,
                                  Identity const& identity) {
    // Two models mostly have the same objects in the same order.
    std::size_t next = 0;
    for (; next != std::min(lefts.size(), rights.size()); ++next) {
        auto const& left = asObject(lefts[next]);
        auto const& right = asObject(rights[next]);
        if (!identity.areSame(left, right) || !comparison_.pairs().add(left, right)) {
            break;
        }
        pairs_.push_back({left, right});
    }
    pairByIdentity(std::span(lefts).subspan(next), std::span(rights).subspan(next), identity);
    return next == lefts.size() && next == rights.size();
}

template <class Object, class Identity>
void ModelComparison::pairByIdentity(std::span<Object const> lefts,
                                     std::span<Object const> rights,
                                     Identity const& identity) {
    Partners partners;
    for (auto const& value : rights) {
        auto const& right = asObject(value);
        partners.add(identity(right), right);
    }
    for (auto const& value : lefts) {
        auto const& left = asObject(value);
        ClassObject const right = partners.take(identity(left));
        if (right.get() == nullptr) {
            comparison_.addExistence(left, {});
        } else if (comparison_.pairs().add(left, right)) {
            pairs_.push_back({left, right});
        }
    }
    for (auto const& value : rights) {
        if (!comparison_.pairs().hasRight(ClassObject(value))) {
            comparison_.addExistence({}, ClassObject(value));
        }
    }
}

/// Pairs the parts of pairs, and the anonymous objects that they refer to.
void ModelComparison::pairWhatTheyHave(std::size_t next) {
    for (; next != pairs_.size(); ++next) {
        ClassUse const& use = useOf(pairs_[next].left);
        if (use.parts.empty() && use.toAnonymous.empty()) {
            continue;
        }
        Pair const owners = pairs_[next]; // `pairs_` grows
        if (haveSameClass(owners.left, owners.right)) {
            pairs_[next].haveSameParts = pairParts(owners, use);
            pairAnonymous(owners, use);
        }
    }
}

/// Whether all parts are pairs, in the same order.
bool ModelComparison::pairParts(Pair const& owners, ClassUse const& use) {
    bool areAllPairs = true;
    for (Attribute const* const attribute : use.parts) {
        Values const lefts = attribute->valuesOf(owners.left);
        Values const rights = attribute->valuesOf(owners.right);
        if (!lefts.empty() || !rights.empty()) {
            areAllPairs = pairObjects(lefts, rights, IdentityInOwner{*attribute}) && areAllPairs;
        }
    }
    return areAllPairs;
}

void ModelComparison::pairAnonymous(Pair const& users, ClassUse const& use) {
    Pairs& pairs = comparison_.pairs();
    for (Attribute const* const attribute : use.toAnonymous) {
        Values const lefts = attribute->valuesOf(users.left);
        Values const rights = attribute->valuesOf(users.right);
        for (std::size_t i = 0; i != std::min(lefts.size(), rights.size()); ++i) {
            ClassObject const left(lefts[i]);
            ClassObject const right(rights[i]);
            if (left_.isAnonymous(left) && right_.isAnonymous(right) && !pairs.hasRight(right) &&
                pairs.add(left, right)) {
                pairs_.push_back({left, right});
            }
        }
    }
}

/// The anonymous objects to which nothing refers.
std::vector<ClassObject> ModelComparison::unplaced(FreeObjects const& side) {
    std::vector<ClassObject> rest;
    for (ClassObject const& object : side.anonymous) {
        if (!side.isReferred.at(object.get())) {
            rest.push_back(object);
        }
    }
    return rest;
}

/// Reports the anonymous objects to which something refers, but nothing that has a partner.
void ModelComparison::addReferredWithoutPartner() {
    for (ClassObject const& object : left_.anonymous) {
        if (left_.isReferred.at(object.get()) && !comparison_.pairs().hasLeft(object)) {
            comparison_.addExistence(object, {});
        }
    }
    for (ClassObject const& object : right_.anonymous) {
        if (right_.isReferred.at(object.get()) && !comparison_.pairs().hasRight(object)) {
            comparison_.addExistence({}, object);
        }
    }
}

void ModelComparison::compareObjects(Pair const& pair, bool haveSameId) {
    if (!haveSameClass(pair.left, pair.right)) {
        comparison_.addClass(pair.left, pair.right);
        return;
    }
    for (Attribute const* const attribute : useOf(pair.left).compared) {
        if (attribute->ownsObjects) {
            if (!pair.haveSameParts) {
                comparison_.compareParts(*attribute, pair.left, pair.right);
            }
        } else if (!haveSameId || !isExternalId(*attribute)) {
            comparison_.compareAttribute(*attribute, pair.left, pair.right);
        }
    }
}

} // namespace QOB::internal
