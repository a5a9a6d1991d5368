#include "model/objects.h"

#include "model/metaclasses.h"

#include <algorithm>
#include <tuple>
#include <velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationnamedelement.h>

namespace velum::model {

namespace foundation = Zorvane::metamodel::foundation;

namespace {

struct Keyed {
    std::string path;
    std::string name;
    int id;
    QOB::ClassObject object;

    friend bool operator<(Keyed const& a, Keyed const& b) {
        // Those without a path come last.
        return std::make_tuple(a.path.empty(), std::cref(a.path), std::cref(a.name), a.id) <
               std::make_tuple(b.path.empty(), std::cref(b.path), std::cref(b.name), b.id);
    }
};

Keyed keyed(QOB::ClassObject const& object) {
    return {pathOf(object), nameOf(object), object.getObjectId(), object};
}

std::vector<QOB::ClassObject> sorted(std::vector<Keyed> objects) {
    std::sort(objects.begin(), objects.end());
    std::vector<QOB::ClassObject> list;
    list.reserve(objects.size());
    for (Keyed const& entry : objects) {
        list.push_back(entry.object);
    }
    return list;
}

bool isBelow(std::string_view path, std::string_view folder) {
    return path.size() > folder.size() && path.substr(0, folder.size()) == folder &&
           (folder.back() == '/' || path[folder.size()] == '/');
}

} // namespace

std::string pathOf(QOB::ClassObject const& object) {
    return object.hasExternalId() ? std::string(object.getExternalId()) : std::string();
}

std::string nameOf(QOB::ClassObject const& object) {
    const foundation::NamedElement named(object);
    const bool hasName = named.isValid() && named.hasName() && named.getName().isValid();
    return hasName ? std::string(named.getName()) : std::string();
}

std::vector<QOB::ClassObject> freeObjects(QOB::Model const& model) {
    std::vector<Keyed> objects;
    for (const QOB::ClassObject object : model.getRootObjects()) {
        if (!object.hasContainerQOB()) {
            objects.push_back(keyed(object));
        }
    }
    return sorted(std::move(objects));
}

std::vector<QOB::ClassObject> objectsAt(QOB::Model const& model, std::string_view path) {
    std::vector<QOB::ClassObject> pending = freeObjects(model);
    if (path.empty()) {
        return pending;
    }
    std::vector<Keyed> below;
    while (!pending.empty()) {
        const QOB::ClassObject object = pending.back();
        pending.pop_back();
        const std::string own = pathOf(object);
        if (own == path) {
            return {object};
        }
        if (isBelow(own, path)) {
            below.push_back(keyed(object));
        } else {
            for (QOB::ClassObject const& contained : containedIn(object)) {
                pending.push_back(contained);
            }
        }
    }
    return sorted(std::move(below));
}

std::vector<QOB::ClassObject> containedIn(QOB::ClassObject const& object) {
    std::vector<QOB::ClassObject> list;
    for (const QOB::ClassObject contained : object.getContaineeQOBs()) {
        list.push_back(contained);
    }
    return list;
}

std::string_view classOf(QOB::ClassObject const& object) {
    return shortName(object.getLumvoName(false));
}

} // namespace velum::model
