#include "model/metaclasses.h"

#include <algorithm>
#include <unordered_map>
#include <velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationintrospection.h>
#include <velum_types/zorvane/metamodel/types/initialize.h>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesintrospection.h>

namespace velum::model {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

/// The classes of a package; its data types are in the same table.
void addClasses(QOB::PackageIntrospectiveMethods const& package,
                bool isOfTypes,
                std::vector<Metaclass>& classes) {
    for (unsigned index = 0; index < package.count; ++index) {
        QOB::IntrospectiveMethods const* const record = package.classes[index];
        if (record == nullptr || record->meta == nullptr) {
            continue;
        }
        const QOB::ImmutableClass live(
            QOB::ImmutableType(record->meta, record->meta->getRootDeviant()));
        if (live.isValid()) {
            classes.push_back({std::string(live.getName()),
                               record,
                               static_cast<unsigned>(live.getOwnedAttributes().size()),
                               isOfTypes});
        }
    }
}

} // namespace

std::vector<Metaclass> const& metaclasses() {
    static const std::vector<Metaclass> all = [] {
        types::initialize(); // harmless when repeated
        std::vector<Metaclass> classes;
        addClasses(*foundation::get_foundation_PackageIntrospectiveMethods(), false, classes);
        addClasses(*types::get_types_PackageIntrospectiveMethods(), true, classes);
        std::sort(classes.begin(), classes.end(), [](Metaclass const& a, Metaclass const& b) {
            return a.name < b.name;
        });
        return classes;
    }();
    return all;
}

Metaclass const* findMetaclass(QOB::IntrospectiveMethods const* record) {
    for (Metaclass const& metaclass : metaclasses()) {
        if (metaclass.record == record) {
            return &metaclass;
        }
    }
    return nullptr;
}

Metaclass const* findMetaclass(std::string_view name) {
    static const auto byName = [] {
        std::unordered_map<std::string_view, Metaclass const*> index;
        for (Metaclass const& metaclass : metaclasses()) {
            index.emplace(metaclass.name, &metaclass);
        }
        return index;
    }();
    const auto found = byName.find(shortName(name));
    return found == byName.end() ? nullptr : found->second;
}

std::vector<Metaclass const*> supersOf(Metaclass const& metaclass) {
    std::vector<Metaclass const*> supers;
    for (QOB::SuperReference const* super = metaclass.record->supers;
         super != nullptr && super->package != nullptr;
         ++super) {
        QOB::PackageIntrospectiveMethods const* const package = super->package();
        if (Metaclass const* const found = findMetaclass(package->classes[super->classIndex])) {
            supers.push_back(found);
        }
    }
    return supers;
}

bool isKindOf(std::string_view name, Metaclass const& base) {
    std::vector<Metaclass const*> pending{findMetaclass(name)};
    while (!pending.empty()) {
        Metaclass const* const next = pending.back();
        pending.pop_back();
        if (next == &base) {
            return true;
        }
        if (next != nullptr) {
            const auto supers = supersOf(*next);
            pending.insert(pending.end(), supers.begin(), supers.end());
        }
    }
    return false;
}

std::vector<QOB::MetaPropertyDescription const*> propertiesOf(Metaclass const& metaclass) {
    QOB::MetaPropertyDescription** const byId = metaclass.record->properties;
    return {byId + 1, byId + 1 + metaclass.propertyCount};
}

std::string_view shortName(std::string_view dottedName) {
    dottedName.remove_prefix(dottedName.rfind('.') + 1);
    return dottedName;
}

} // namespace velum::model
