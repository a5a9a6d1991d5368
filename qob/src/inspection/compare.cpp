#include "qob/qob/compare.h"

#include "../modelcore.h"
#include "attributes.h"
#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/objecttext.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace QOB {

namespace {

using internal::Attribute;
using internal::Attributes;
using NSInterface::ClassObjectIntf;

bool haveSameClass(ClassObject const& left, ClassObject const& right) {
    return std::string_view(left.getLumvoName(false)) == right.getLumvoName(false);
}

/// By what two values are seen to be the same: an object for both sides, or a text.
struct Key {
    void const* object = nullptr;
    std::string text{};

    friend bool operator==(Key const&, Key const&) = default;
    friend bool operator<(Key const& a, Key const& b) {
        return std::tie(a.object, a.text) < std::tie(b.object, b.text);
    }
};

/// Which object on the left is which on the right.
class Pairs {
public:
    /// In two models objects outside of what is compared are known by their external ids.
    explicit Pairs(bool areInTwoModels) : areInTwoModels_(areInTwoModels) {}

    /// False if the left one has been paired already.
    bool add(ClassObject const& left, ClassObject const& right) {
        bool const isNew = rightOf_.emplace(left.get(), right.get()).second;
        if (isNew) {
            rights_.insert(right.get());
        }
        return isNew;
    }

    Key leftKey(Object const& value) const {
        ClassObject const object(value);
        auto const found = rightOf_.find(object.get());
        return found != rightOf_.end() ? Key{found->second} : key(value, object);
    }
    Key rightKey(Object const& value) const {
        ClassObject const object(value);
        return rights_.contains(object.get()) ? Key{object.get()} : key(value, object);
    }

private:
    Key key(Object const& value, ClassObject const& object) const {
        if (value.get() == nullptr) {
            return {};
        }
        if (object.get() == nullptr) {
            return {nullptr, std::string(value.getLumvoName(false)) + ' ' + toText(value)};
        }
        if (areInTwoModels_ && object.isValid() && object.hasExternalId()) {
            return {nullptr,
                    std::string(object.getLumvoName(false)) + ' ' +
                        std::string(object.getExternalId())};
        }
        return {object.get()};
    }

    bool areInTwoModels_;
    boost::unordered_flat_map<ClassObjectIntf const*, ClassObjectIntf const*> rightOf_;
    boost::unordered_flat_set<ClassObjectIntf const*> rights_;
};

using Values = std::vector<Object>;

/// The objects of a list, each with the name that it alone has there; the others with an empty one.
std::vector<std::pair<std::string, ClassObject>> withNames(Values const& values) {
    std::vector<std::pair<std::string, ClassObject>> named;
    std::unordered_map<std::string, int> uses;
    for (Object const& value : values) {
        ClassObject const object(value);
        String const name = object.isValid() ? internal::nameOf(object) : String();
        named.emplace_back(name.isValid() ? std::string(name) : std::string(), object);
        ++uses[named.back().first];
    }
    for (auto& [name, object] : named) {
        if (uses.at(name) != 1) {
            name.clear();
        }
    }
    return named;
}

/// Calls the function with each two objects of two lists that belong together: those of one name,
/// then those that are left, in order.
template <class Function>
void forEachPair(Values const& left, Values const& right, Function const& function) {
    auto const rights = withNames(right);
    std::unordered_map<std::string_view, ClassObject> rightByName;
    for (auto const& [name, object] : rights) {
        if (!name.empty()) {
            rightByName.emplace(name, object);
        }
    }
    std::vector<ClassObject> leftRest;
    for (auto const& [name, object] : withNames(left)) {
        auto const found = rightByName.find(name);
        if (found == rightByName.end()) {
            leftRest.push_back(object);
        } else {
            function(object, found->second);
            rightByName.erase(found);
        }
    }
    auto next = leftRest.begin();
    for (auto const& [name, object] : rights) {
        bool const isLeft = name.empty() || rightByName.contains(name);
        if (isLeft && next != leftRest.end()) {
            function(*next++, object);
        }
    }
}

class Comparison {
public:
    explicit Comparison(bool areInTwoModels = false) : pairs_(areInTwoModels) {}

    /// Pairs two objects and all that they contain, then looks at each pair.
    void compareTrees(ClassObject const& left, ClassObject const& right) {
        std::vector<std::pair<ClassObject, ClassObject>> const all = pairTrees(left, right);
        for (auto const& [one, other] : all) {
            compareAttributes(one, other);
        }
    }

    /// Looks at one object as it is seen on both sides.
    void compareStates(ClassObject const& left, ClassObject const& right) {
        bool const isLeft = left.isValid();
        bool const isRight = right.isValid();
        if (isLeft != isRight) {
            add(isLeft ? left : ClassObject(), isRight ? right : ClassObject());
        } else if (isLeft && stateOf(left) != stateOf(right)) {
            for (Attribute const& attribute : attributes_.of(left)) {
                compareAttribute(attribute, left, right);
            }
            compareAttribute(container_, left, right);
        }
    }

    std::vector<Difference> takeDifferences() { return std::move(differences_); }

private:
    static ClassObjectIntf const* stateOf(ClassObject const& object) {
        ClassObjectIntf const* const self = object.get();
        return self->getReadDeviantI(object.getDeviant(), self);
    }

    std::vector<std::pair<ClassObject, ClassObject>> pairTrees(ClassObject const& left,
                                                               ClassObject const& right) {
        std::vector<std::pair<ClassObject, ClassObject>> all;
        std::vector<std::pair<ClassObject, ClassObject>> open{{left, right}};
        std::vector<std::pair<ClassObject, ClassObject>> parts;
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
                    forEachPair(attribute.valuesOf(next.first),
                                attribute.valuesOf(next.second),
                                [&](ClassObject const& one, ClassObject const& other) {
                                    parts.emplace_back(one, other);
                                });
                }
            }
            open.insert(open.end(), parts.rbegin(), parts.rend());
        }
        return all;
    }

    void compareAttributes(ClassObject const& left, ClassObject const& right) {
        if (!haveSameClass(left, right)) {
            add(left, right);
            return;
        }
        for (Attribute const& attribute : attributes_.of(left)) {
            if (!attribute.isWayToOwner) {
                compareAttribute(attribute, left, right);
            }
        }
    }

    void compareAttribute(Attribute const& attribute,
                          ClassObject const& left,
                          ClassObject const& right) {
        Values const leftValues = attribute.valuesOf(left);
        Values const rightValues = attribute.valuesOf(right);
        std::vector<Key> leftKeys;
        for (Object const& value : leftValues) {
            leftKeys.push_back(pairs_.leftKey(value));
        }
        std::vector<Key> rightKeys;
        for (Object const& value : rightValues) {
            rightKeys.push_back(pairs_.rightKey(value));
        }
        if (!attribute.isOrdered) {
            std::sort(leftKeys.begin(), leftKeys.end());
            std::sort(rightKeys.begin(), rightKeys.end());
        }
        if (leftKeys != rightKeys) {
            differences_.push_back({left, right, attribute.name, leftValues, rightValues});
        }
    }

    void add(ClassObject const& left, ClassObject const& right) {
        differences_.push_back({left, right, String()});
    }

    Pairs pairs_;
    Attributes attributes_;
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
    if (&core != &internal::ModelCore::of(right.getDeviant())) {
        QOB_FAIL("Two models cannot be compared, only two deviants of one.");
    }
    Comparison comparison;
    core.forEachObject([&](ClassObjectIntf* object) {
        // The model itself lists what is told of each object.
        if (object != core.model()) {
            comparison.compareStates({object, left.getDeviant()}, {object, right.getDeviant()});
        }
    });
    return comparison.takeDifferences();
}

} // namespace QOB
