#include "describe/registry_reader.h"

#include <algorithm>
#include <qob/qob.h>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <velum_types/zorvane/metamodel/types/initialize.h>

namespace velum::describe {

namespace {

std::vector<Tag> tagsOf(QOB::ImmutableNamedElement const& element) {
    std::vector<Tag> tags;
    for (const QOB::ImmutableStereotypeObject tag : QOB::getTags(element)) {
        tags.push_back({tag.getStereotypeName(), tag.getValue()});
    }
    return tags;
}

/// Reads in two passes: an element may refer to any other, so all are made before they are linked.
class RegistryReader {
public:
    std::deque<Package> read() {
        for (const QOB::ClassObject object :
             QOB::DomainRegistry::instance()->getMetaRegistry().getRootObjects()) {
            const QOB::ImmutablePackage package(object);
            if (package.isValid() && !package.hasParent()) {
                addPackage(package, "");
            }
        }
        for (auto const& [live, type] : types_) {
            if (const QOB::ImmutableClass metaclass(live); metaclass.isValid()) {
                linkClass(metaclass, *type);
            }
        }
        for (auto const& [live, property] : properties_) {
            linkProperty(live, *property);
        }
        sortReverseLinks();
        return std::move(packages_);
    }

private:
    using LiveTypes = std::vector<QOB::ImmutableType>;

    void addPackage(QOB::ImmutablePackage const& live, std::string const& prefix) {
        const std::string name = prefix + std::string(live.getName());
        LiveTypes types;
        for (const QOB::ImmutableType type : live.getOwnedTypes()) {
            types.push_back(type);
        }
        if (!types.empty()) {
            std::sort(types.begin(), types.end(), [](auto const& a, auto const& b) {
                return a.getName() < b.getName();
            });
            Package& package = packages_.emplace_back();
            package.name = name;
            package.uri = live.getUri();
            package.tags = tagsOf(live);
            for (QOB::ImmutableType const& type : types) {
                addType(type, package);
            }
        }
        for (const QOB::ImmutablePackage nested : live.getNestedPackages()) {
            addPackage(nested, name + ".");
        }
    }

    void addType(QOB::ImmutableType const& live, Package& package) {
        Type& type = package.types.emplace_back();
        types_.emplace(live, &type);
        type.package = &package;
        type.name = live.getName();
        type.tags = tagsOf(live);
        if (const QOB::ImmutableClass metaclass(live); metaclass.isValid()) {
            type.isAbstract = metaclass.isAbstract() == true;
            for (const QOB::String comment : metaclass.getComments()) {
                type.comments.push_back(comment);
            }
            for (const QOB::ImmutableProperty property : metaclass.getOwnedAttributes()) {
                addProperty(property, type);
            }
        } else if (const QOB::ImmutableEnumeration enumeration(live); enumeration.isValid()) {
            type.kind = Type::Kind::enumeration;
            for (const QOB::ImmutableEnumerationLiteral literal : enumeration.getOwnedLiterals()) {
                type.literals.push_back(literal.getName());
            }
        } else {
            type.kind = Type::Kind::dataType;
        }
    }

    void addProperty(QOB::ImmutableProperty const& live, Type& owner) {
        Property& property = owner.properties.emplace_back();
        properties_.emplace(live, &property);
        property.owner = &owner;
        property.name = live.getName();
        property.lower = live.getLower();
        if (const int upper = live.getUpper(); upper != QOB::ImmutableProperty::Unbounded) {
            property.upper = upper;
        }
        property.defaultValue = live.getDefaultValue();
        property.documentation = live.getDocumentation();
        property.associationName = live.getAssociationName();
        property.otherEndName = live.getOtherEndName();
        property.isComposite = live.isComposite();
        property.isDerived = live.isDerived();
        property.isReadOnly = live.isReadOnly();
        property.isOrdered = live.isOrdered();
        property.mayRepeat = live.isMultiValued() && !live.isUnique();
        property.isPrivate = live.isPrivate() == true;
        property.tags = tagsOf(live);
    }

    void linkClass(QOB::ImmutableClass const& live, Type& type) {
        for (const QOB::ImmutableClass base : live.getSupers()) {
            Type* const super = types_.at(base);
            type.supers.push_back(super);
            super->subs.push_back(&type);
        }
    }

    void linkProperty(QOB::ImmutableProperty const& live, Property& property) {
        if (live.hasType()) {
            Type* const type = types_.at(live.getType());
            property.type = type;
            type->users.push_back(&property);
        }
        if (live.hasOpposite()) {
            property.opposite = properties_.at(live.getOpposite());
        }
        for (const QOB::ImmutableProperty redefined : live.getRedefinedProperties()) {
            property.redefined.push_back(properties_.at(redefined));
        }
        for (const QOB::ImmutableProperty subsetted : live.getSubsettedProperties()) {
            property.subsetted.push_back(properties_.at(subsetted));
        }
    }

    /// The links back were made in no order.
    void sortReverseLinks() {
        const auto byName = [](Type const* a, Type const* b) { return a->name < b->name; };
        const auto byOwner = [](Property const* a, Property const* b) {
            return std::tie(a->owner->name, a->name) < std::tie(b->owner->name, b->name);
        };
        for (Package& package : packages_) {
            for (Type& type : package.types) {
                std::sort(type.subs.begin(), type.subs.end(), byName);
                std::sort(type.users.begin(), type.users.end(), byOwner);
            }
        }
    }

    std::deque<Package> packages_;
    std::unordered_map<QOB::ImmutableType, Type*> types_;
    std::unordered_map<QOB::ImmutableProperty, Property*> properties_;
};

} // namespace

std::deque<Package> readRegistry() {
    Zorvane::metamodel::types::initialize(); // harmless when repeated
    return RegistryReader().read();
}

} // namespace velum::describe
