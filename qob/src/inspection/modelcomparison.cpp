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

void ClassUse::sort() {
    for (Attribute const& attribute : *all) {
        bool const isForObjects = hasObjects(attribute);
        if (isForObjects && std::find(unused.begin(), unused.end(), &attribute) != unused.end()) {
            continue;
        }
        if (isForObjects) {
            (attribute.ownsObjects ? parts : references).push_back(&attribute);
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
    for (auto& [attributes, use] : uses_) {
        use.sort();
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
        compareObjects(pairs_[i].first, pairs_[i].second, i < withSameIds);
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

void ModelComparison::findReferred(Model const& model, FreeObjects& found) {
    if (found.anonymous.empty()) {
        return;
    }
    forEachIn(model, [&](ClassObject const& object) {
        ClassUse& use = useOf(object);
        for (Attribute const* const attribute : use.references) {
            auto& ways = use.toAnonymous;
            if (noteReferred(attribute->valuesOf(object), found) &&
                std::find(ways.begin(), ways.end(), attribute) == ways.end()) {
                ways.push_back(attribute);
            }
        }
    });
}

/// Whether any of the values is anonymous.
bool ModelComparison::noteReferred(Values const& values, FreeObjects& found) {
    bool isAny = false;
    for (Object const& value : values) {
        auto const place = found.isReferred.find(ClassObject(value).get());
        if (place != found.isReferred.end()) {
            place->second = true;
            isAny = true;
        }
    }
    return isAny;
}

/// Appends those that are a pair; reports the others.
template <class Objects, class Identity>
void ModelComparison::pairObjects(Objects const& lefts,
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
        pairs_.emplace_back(left, right);
    }
    pairByIdentity(std::span(lefts).subspan(next), std::span(rights).subspan(next), identity);
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
            pairs_.emplace_back(left, right);
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
        ClassUse const& use = useOf(pairs_[next].first);
        if (use.parts.empty() && use.toAnonymous.empty()) {
            continue;
        }
        Pair const owners = pairs_[next]; // `pairs_` grows
        if (haveSameClass(owners.first, owners.second)) {
            pairParts(owners, use);
            pairAnonymous(owners, use);
        }
    }
}

void ModelComparison::pairParts(Pair const& owners, ClassUse const& use) {
    for (Attribute const* const attribute : use.parts) {
        Values const lefts = attribute->valuesOf(owners.first);
        Values const rights = attribute->valuesOf(owners.second);
        if (!lefts.empty() || !rights.empty()) {
            pairObjects(lefts, rights, IdentityInOwner{*attribute});
        }
    }
}

void ModelComparison::pairAnonymous(Pair const& users, ClassUse const& use) {
    Pairs& pairs = comparison_.pairs();
    for (Attribute const* const attribute : use.toAnonymous) {
        Values const lefts = attribute->valuesOf(users.first);
        Values const rights = attribute->valuesOf(users.second);
        for (std::size_t i = 0; i != std::min(lefts.size(), rights.size()); ++i) {
            ClassObject const left(lefts[i]);
            ClassObject const right(rights[i]);
            if (left_.isAnonymous(left) && right_.isAnonymous(right) && !pairs.hasRight(right) &&
                pairs.add(left, right)) {
                pairs_.emplace_back(left, right);
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

void ModelComparison::compareObjects(ClassObject const& left,
                                     ClassObject const& right,
                                     bool haveSameId) {
    if (!haveSameClass(left, right)) {
        comparison_.addClass(left, right);
        return;
    }
    for (Attribute const* const attribute : useOf(left).compared) {
        if (attribute->ownsObjects) {
            comparison_.compareParts(*attribute, left, right);
        } else if (!haveSameId || !isExternalId(*attribute)) {
            comparison_.compareAttribute(*attribute, left, right);
        }
    }
}

} // namespace QOB::internal
