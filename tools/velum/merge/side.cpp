#include "merge/side.h"

#include "model/objects.h"

#include <utility>

namespace velum::merge {

using QOB::ClassObject;

std::string keyOf(std::string const& path, std::string const& part) {
    return part.empty() ? path : path + '#' + part;
}

std::vector<ClassObject> allObjects(QOB::Model const& model) {
    std::vector<ClassObject> objects = model::freeObjects(model);
    for (std::size_t next = 0; next != objects.size(); ++next) {
        for (ClassObject const& part : model::containedIn(objects[next])) {
            objects.push_back(part);
        }
    }
    return objects;
}

Side::Side(QOB::Model model) : model_(std::move(model)) {
    for (ClassObject const& object : allObjects(model_)) {
        ClassObject const whole = addresses_.outermost(object);
        put(merge::keyOf(addresses_.of(whole), addresses_.place(object, whole)), object);
    }
}

std::string const& Side::keyOf(ClassObject const& object) const {
    static std::string const none;
    auto const found = keys_.find(object.get());
    return found != keys_.end() ? found->second : none;
}

ClassObject Side::find(std::string const& key) const {
    auto const found = byKey_.find(key);
    return found != byKey_.end() ? found->second : ClassObject();
}

void Side::put(std::string const& key, ClassObject const& object) {
    byKey_.insert_or_assign(key, object);
    keys_.insert_or_assign(object.get(), key);
}

QOB::Attribute const* Side::attribute(ClassObject const& object, std::string_view name) {
    for (QOB::Attribute const& each : addresses_.attributes().of(object)) {
        if (each.name.view() == name) {
            return &each;
        }
    }
    return nullptr;
}

std::vector<QOB::Object> Side::valuesOf(ClassObject const& object, std::string_view property) {
    QOB::Attribute const* const found =
        object.get() == nullptr ? nullptr : attribute(object, property);
    return found == nullptr ? std::vector<QOB::Object>() : found->valuesOf(object);
}

std::vector<std::string> Side::partsOf(ClassObject const& object, std::string_view property) {
    std::vector<std::string> keys;
    for (QOB::Object const& value : valuesOf(object, property)) {
        keys.push_back(keyOf(ClassObject(value)));
    }
    return keys;
}

} // namespace velum::merge
