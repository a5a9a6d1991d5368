#pragma once

#include "qob/qob/attributes.h"
#include "qob/qob/object.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

namespace QOB::internal {

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

    bool hasLeft(ClassObject const& object) const { return rightOf_.contains(object.get()); }
    bool hasRight(ClassObject const& object) const { return rights_.contains(object.get()); }

    /// Whether they are one pair, or both nothing.
    bool arePair(ClassObject const& left, ClassObject const& right) const {
        auto const found = rightOf_.find(left.get());
        return found != rightOf_.end() ? found->second == right.get()
                                       : left.get() == nullptr && right.get() == nullptr;
    }

    /// Whether two objects of one class are seen to have the same values of an attribute, without a
    /// look at the values of lists. False says nothing.
    bool areSeenSame(Attribute const& attribute,
                     ClassObject const& left,
                     ClassObject const& right) const;

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
    Key key(Object const& value, ClassObject const& object) const;

    bool areInTwoModels_;
    boost::unordered_flat_map<NSInterface::ClassObjectIntf const*,
                              NSInterface::ClassObjectIntf const*>
        rightOf_;
    boost::unordered_flat_set<NSInterface::ClassObjectIntf const*> rights_;
};

/// Pairs each object with the next of the same key that isn't taken yet.
class Partners {
public:
    void add(std::string key, ClassObject const& object) {
        byKey_[std::move(key)].objects.push_back(object);
    }
    /// Empty if there is none.
    ClassObject take(std::string const& key) {
        auto const found = byKey_.find(key);
        bool const isThere =
            found != byKey_.end() && found->second.next != found->second.objects.size();
        return isThere ? found->second.objects[found->second.next++] : ClassObject();
    }

private:
    struct Queue {
        std::vector<ClassObject> objects;
        std::size_t next = 0;
    };
    std::unordered_map<std::string, Queue> byKey_;
};

/// Whether an object that nothing contains has neither an external id nor a name.
bool isAnonymous(ClassObject const& object);

/// What identifies an object that nothing contains, among the others of a model.
struct IdentityInModel {
    std::string operator()(ClassObject const& object) const;
    bool areSame(ClassObject const& left, ClassObject const& right) const;
};

/// What identifies an object among those that one property of its container owns.
struct IdentityInOwner {
    Attribute const& attribute;

    std::string operator()(ClassObject const& object) const;
    bool areSame(ClassObject const& left, ClassObject const& right) const;
};

/// The objects of two lists that belong together: those that are the only ones of their name in
/// both lists, then those that are left, in order.
std::vector<std::pair<ClassObject, ClassObject>> pairsOf(std::vector<Object> const& left,
                                                         std::vector<Object> const& right);

/// Whether two lists of boxed values are seen to be the same without a look at their texts.
bool areSameValues(std::vector<Object> const& left, std::vector<Object> const& right);

} // namespace QOB::internal
