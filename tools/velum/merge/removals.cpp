#include "merge/removals.h"

#include "diff/printers.h"
#include "merge/copies.h"
#include "model/objects.h"

#include <algorithm>

namespace velum::merge {

using QOB::Attribute;
using QOB::ClassObject;
using Values = std::vector<QOB::Object>;

Removals::Removals(Side& base, Side& ours, ConflictLog& log)
    : base_(base), ours_(ours), log_(log), usedBefore_(usedWithoutPath()) {
}

std::size_t Removals::finish() {
    findAffected();
    bool isSettled = objects_.empty();
    while (!isSettled) {
        isSettled = true;
        for (ClassObject const& object : allObjects(ours_.model())) {
            if (!affected_.contains(object.get())) {
                isSettled = lead(object) && isSettled;
            }
        }
    }
    for (ClassObject const& object : objects_) {
        if (object.isValid()) {
            object.destroy();
        }
    }
    destroyUnused(usedBefore_);
    return keptCount_;
}

void Removals::findAffected() {
    for (ClassObject const& whole : objects_) {
        std::vector<ClassObject> open{whole};
        while (!open.empty()) {
            ClassObject const object = open.back();
            open.pop_back();
            affected_.emplace(object.get(), whole.get());
            for (ClassObject const& part : model::containedIn(object)) {
                open.push_back(part);
            }
        }
    }
}

/// Looks at the references of an object that stays. False if something else stays for it.
bool Removals::lead(ClassObject const& user) {
    std::size_t const before = keptCount_;
    for (Attribute const& attribute : ours_.addresses().attributes().of(user)) {
        if (!isOwnReference(attribute)) {
            continue;
        }
        Values const values = attribute.valuesOf(user);
        Values now;
        for (QOB::Object const& value : values) {
            ClassObject const target(value);
            ClassObject const other =
                affected_.contains(target.get()) ? leadTo(user, target) : target;
            if (other.get() != nullptr) {
                now.emplace_back(other);
            }
        }
        bool const isSame = std::equal(values.begin(),
                                       values.end(),
                                       now.begin(),
                                       now.end(),
                                       [](QOB::Object const& a, QOB::Object const& b) {
                                           return ClassObject(a).get() == ClassObject(b).get();
                                       });
        if (!isSame) {
            setValues(user, attribute, now);
        }
    }
    return before == keptCount_;
}

/// What stands for something that goes; empty if nothing does.
ClassObject Removals::leadTo(ClassObject const& user, ClassObject const& target) {
    std::string const& key = ours_.keyOf(target);
    ClassObject other = ours_.find(key);
    if (other.get() != nullptr && !affected_.contains(other.get())) {
        return other;
    }
    void const* const whole = affected_.at(target.get());
    if (!decided_.insert(whole).second) {
        return {};
    }
    ClassObject const old = base_.find(key);
    if (log_.add({.kind = ConflictKind::removed,
                  .path = key,
                  .base = old.get() == nullptr ? "nothing" : diff::partText(old, base_.addresses()),
                  .ours = "used by " + ours_.keyOf(user),
                  .theirs = "nothing"}) == Taken::theirs) {
        return {};
    }
    keep(whole);
    return target;
}

void Removals::keep(void const* whole) {
    std::erase_if(objects_, [&](ClassObject const& each) { return each.get() == whole; });
    std::erase_if(affected_, [&](auto const& each) { return each.second == whole; });
    ++keptCount_;
}

/// The objects without a path that something refers to.
Removals::Pointers Removals::usedWithoutPath() {
    Pointers used;
    for (ClassObject const& object : allObjects(ours_.model())) {
        for (Attribute const& attribute : ours_.addresses().attributes().of(object)) {
            if (!isOwnReference(attribute)) {
                continue;
            }
            for (QOB::Object const& value : attribute.valuesOf(object)) {
                ClassObject const target(value);
                if (target.get() != nullptr && !target.hasContainerQOB() &&
                    !target.hasExternalId()) {
                    used.insert(target.get());
                }
            }
        }
    }
    return used;
}

/// What belonged to objects that are gone, such as the type of the values of an array.
void Removals::destroyUnused(Pointers const& usedBefore) {
    Pointers const used = usedWithoutPath();
    for (ClassObject const& object : model::freeObjects(ours_.model())) {
        if (usedBefore.contains(object.get()) && !used.contains(object.get())) {
            object.destroy();
        }
    }
}

} // namespace velum::merge
