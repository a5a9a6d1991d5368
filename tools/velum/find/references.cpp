#include "find/references.h"

#include "model/objects.h"

#include <algorithm>

namespace velum::find {

using QOB::ClassObject;

References::References(QOB::Model const& model, model::Addresses& addresses)
    : addresses_(addresses) {
    std::vector<ClassObject> pending = model::freeObjects(model);
    std::vector<ClassObject> parts;
    std::reverse(pending.begin(), pending.end());
    while (!pending.empty()) {
        ClassObject const object = pending.back();
        pending.pop_back();
        objects_.push_back(object);
        parts.clear();
        for (QOB::Attribute const& attribute : addresses.attributes().of(object)) {
            if (attribute.isWayToOwner || attribute.isOtherEnd) {
                continue;
            }
            for (QOB::Object const& value : attribute.valuesOf(object)) {
                ClassObject const target(value);
                if (target.get() != nullptr && attribute.ownsObjects) {
                    parts.push_back(target);
                } else if (target.get() != nullptr) {
                    add(object, target);
                }
            }
        }
        pending.insert(pending.end(), parts.rbegin(), parts.rend());
    }
}

/// The object that an object belongs to: itself if it has a path.
ClassObject References::ownerOf(ClassObject const& object) {
    ClassObject owner = object;
    while (!owner.hasExternalId()) {
        ClassObject const next = addresses_.around(owner);
        if (next.get() == nullptr) {
            break;
        }
        owner = next;
    }
    return owner;
}

/// The object and all around it, the outermost last.
std::vector<ClassObject> References::withOuter(ClassObject const& object) {
    std::vector<ClassObject> all;
    for (ClassObject next = object; next.get() != nullptr; next = addresses_.around(next)) {
        all.push_back(next);
    }
    return all;
}

void References::add(ClassObject const& user, ClassObject const& target) {
    used_[ownerOf(user).get()].insert(ownerOf(target).get());
    // What is around the target is used too, unless the user is in there as well.
    std::vector<ClassObject> const users = withOuter(user);
    for (ClassObject const& each : withOuter(target)) {
        if (std::find(users.begin(), users.end(), each) != users.end()) {
            return;
        }
        usedFromOutside_.insert(each.get());
    }
}

std::unordered_set<void const*> const& References::usedBy(ClassObject const& user) const {
    static Set const none;
    auto const found = used_.find(user.get());
    return found != used_.end() ? found->second : none;
}

bool References::isUnused(ClassObject const& object) const {
    return !usedFromOutside_.contains(object.get());
}

} // namespace velum::find
