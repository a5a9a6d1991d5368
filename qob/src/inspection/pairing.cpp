#include "pairing.h"

#include "attributes.h"
#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/objecttext.h"

#include <algorithm>
#include <string_view>
#include <typeinfo>

namespace QOB::internal {

namespace {

std::string nameText(ClassObject const& object) {
    String const name = object.isValid() ? nameOf(object) : String();
    return name.isValid() ? std::string(name) : std::string();
}

bool haveSameName(ClassObject const& left, ClassObject const& right) {
    String const one = nameOf(left);
    String const other = nameOf(right);
    return (one.isValid() ? one.view() : "") == (other.isValid() ? other.view() : "");
}

bool haveSameExternalId(ClassObject const& left, ClassObject const& right) {
    return left.getExternalId().view() == right.getExternalId().view();
}

/// The objects of a list, each with the name that it alone has there; the others with an empty one.
std::vector<std::pair<std::string, ClassObject>> withNames(std::vector<Object> const& values) {
    std::vector<std::pair<std::string, ClassObject>> named;
    std::unordered_map<std::string, int> uses;
    for (Object const& value : values) {
        ClassObject const object(value);
        named.emplace_back(nameText(object), object);
        ++uses[named.back().first];
    }
    for (auto& [name, object] : named) {
        if (uses.at(name) != 1) {
            name.clear();
        }
    }
    return named;
}

/// Whether two boxes hold the same value of one type.
template <class Value>
bool isSame(NSInterface::ValueObjectIntf const& left, NSInterface::ValueObjectIntf const& right) {
    auto const* const one = static_cast<Value const*>(left.findValue(typeid(Value)));
    auto const* const other = static_cast<Value const*>(right.findValue(typeid(Value)));
    return one != nullptr && other != nullptr && *one == *other;
}

/// Whether two boxes are seen to hold the same without a look at their texts.
bool isSameValue(Object const& left, Object const& right) {
    auto const* const one = valueObject(left.get());
    auto const* const other = valueObject(right.get());
    if (one == nullptr || other == nullptr) {
        return false;
    }
    return isSame<String>(*one, *other) || isSame<Real>(*one, *other) ||
           isSame<Integer>(*one, *other) || isSame<Boolean>(*one, *other);
}

/// Whether two boxes hold values of one type with the same text.
bool haveSameText(Object const& left, Object const& right) {
    auto const* const one = valueObject(left.get());
    auto const* const other = valueObject(right.get());
    return one != nullptr && other != nullptr && typeid(*one) == typeid(*other) &&
           left.toString() == right.toString();
}

} // namespace

Key Pairs::key(Object const& value, ClassObject const& object) const {
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

bool isAnonymous(ClassObject const& object) {
    return !object.hasExternalId() && !object.hasContainerQOB() && nameText(object).empty();
}

bool Pairs::areSeenSame(Attribute const& attribute,
                        ClassObject const& left,
                        ClassObject const& right) const {
    if (isExternalId(attribute) && left.hasExternalId() && right.hasExternalId()) {
        return haveSameExternalId(left, right);
    }
    if (attribute.reader == nullptr && attribute.isMultiValued && !attribute.isReference &&
        !attribute.ownsObjects) {
        return listOf(attribute, left).generic_equal(listOf(attribute, right));
    }
    if (attribute.reader != nullptr || attribute.isMultiValued) {
        return !hasValues(attribute, left) && !hasValues(attribute, right);
    }
    IntrospectiveMethods const& methods = *attribute.binding.methods;
    unsigned const id = attribute.binding.id;
    bool const isThere = methods.hasSingleValued(left.get(), left.getDeviant(), id);
    if (isThere != methods.hasSingleValued(right.get(), right.getDeviant(), id)) {
        return false;
    }
    if (!isThere) {
        return true;
    }
    Object const one = methods.getSingleValued(left.get(), left.getDeviant(), id);
    Object const other = methods.getSingleValued(right.get(), right.getDeviant(), id);
    return attribute.isReference || attribute.ownsObjects
               ? arePair(ClassObject(one), ClassObject(other))
               : isSameValue(one, other) || haveSameText(one, other);
}

std::string IdentityInModel::operator()(ClassObject const& object) const {
    return object.hasExternalId()
               ? "id " + std::string(object.getExternalId())
               : std::string(object.getLumvoName(false)) + ' ' + nameText(object);
}

bool IdentityInModel::areSame(ClassObject const& left, ClassObject const& right) const {
    bool const isById = left.hasExternalId();
    if (isById || right.hasExternalId()) {
        return isById && right.hasExternalId() && haveSameExternalId(left, right);
    }
    return std::string_view(left.getLumvoName(false)) == right.getLumvoName(false) &&
           haveSameName(left, right);
}

std::string IdentityInOwner::operator()(ClassObject const& object) const {
    return attribute.isMultiValued ? nameText(object) : std::string();
}

bool IdentityInOwner::areSame(ClassObject const& left, ClassObject const& right) const {
    return !attribute.isMultiValued || haveSameName(left, right);
}

std::vector<std::pair<ClassObject, ClassObject>> pairsOf(std::vector<Object> const& left,
                                                         std::vector<Object> const& right) {
    std::vector<std::pair<ClassObject, ClassObject>> pairs;
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
            pairs.emplace_back(object, found->second);
            rightByName.erase(found);
        }
    }
    auto next = leftRest.begin();
    for (auto const& [name, object] : rights) {
        bool const isLeft = name.empty() || rightByName.contains(name);
        if (isLeft && next != leftRest.end()) {
            pairs.emplace_back(*next++, object);
        }
    }
    return pairs;
}

bool areSameValues(std::vector<Object> const& left, std::vector<Object> const& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSameValue);
}

} // namespace QOB::internal
