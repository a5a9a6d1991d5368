#include "qob/kernel/meta/metapackagecreation.h"

#include "keptvalue.h"
#include "qob/qob/domainregistry.h"

namespace QOB {

using NSInterface::PackageIntf;

namespace {

/// `pointer` is where the element is noted.
template <class Element, class Pointer>
void enter(Element const& element,
           Pointer& pointer,
           MetaDataTypeDescription const& type,
           Package const& package) {
    internal::keepValue(element.getDeviant(), pointer);
    internal::keepValue(element.getDeviant(), type.methods->meta);
    pointer = element.get();
    type.methods->meta = element.get();
    element.setName(type.name);
    element.setPackage(package);
    package.getOwnedTypes().push_back(element);
}

void createDataType(MetaDataTypeDescription const& type,
                    Factory const& factory,
                    Package const& package) {
    if (type.dataType == nullptr || *type.dataType != nullptr) {
        return;
    }
    DataType const element = factory.createDataType();
    enter(element, *type.dataType, type, package);
}

void createEnumeration(MetaDataTypeDescription const& type,
                       Factory const& factory,
                       Package const& package) {
    if (type.enumeration == nullptr || *type.enumeration != nullptr) {
        return;
    }
    Enumeration const element = factory.createEnumeration();
    enter(element, *type.enumeration, type, package);
    for (char const* const text : type.literals) {
        EnumerationLiteral const literal = factory.createEnumerationLiteral();
        literal.setName(text);
        literal.setEnumeration(element);
        element.getOwnedLiterals().push_back(literal);
    }
}

void keepDataTypes(MetaPackageDescription const& description, Deviant deviant) {
    for (MetaDataTypeDescription const& type : description.dataTypes) {
        internal::keepValue(deviant, type.methods->meta);
        if (type.dataType != nullptr) {
            internal::keepValue(deviant, *type.dataType);
        }
        if (type.enumeration != nullptr) {
            internal::keepValue(deviant, *type.enumeration);
        }
    }
}

void forgetDataTypes(MetaPackageDescription const& description) noexcept {
    for (MetaDataTypeDescription const& type : description.dataTypes) {
        type.methods->meta = nullptr;
        if (type.dataType != nullptr) {
            *type.dataType = nullptr;
        }
        if (type.enumeration != nullptr) {
            *type.enumeration = nullptr;
        }
    }
}

void createElements(PackageIntf*& package,
                    MetaPackageDescription const& description,
                    Factory const& factory,
                    Package const& parent) {
    Package const made = factory.createPackage();
    internal::keepValue(made.getDeviant(), package);
    package = made.get();
    made.setName(description.name);
    made.setUri(String(DomainRegistry::instance()->getDomainCanonicalUri(description.name)));
    if (parent.isValid()) {
        made.setParent(parent);
        parent.getNestedPackages().push_back(made);
    } else {
        made.setContainerQOB(ClassObject(made.getModelQOB())); // which every new element has
    }
    for (MetaDataTypeDescription const& type : description.dataTypes) {
        createDataType(type, factory, made);
        createEnumeration(type, factory, made);
    }
    for (MetaClassFunctions const& each : description.classes) {
        each.create(factory, made);
    }
}

} // namespace

PackageIntf*& initializeMetaPackage(PackageIntf*& package,
                                    MetaPackageDescription const& description,
                                    PackageIntf*& (*parent)()) {
    DomainRegistry const& registry = *DomainRegistry::instance();
    Factory const factory = registry.getMetaRegistryFactory();
    if (package == nullptr) {
        Package const around(parent != nullptr ? parent() : nullptr,
                             registry.getMetaRegistry().getDeviant());
        createMetaPackage(package, description, factory, around);
    }
    updateMetaPackage(package, description, factory);
    return package;
}

void terminateMetaPackage(PackageIntf*& package, MetaPackageDescription const& description) {
    if (package != nullptr) {
        destroyMetaPackage(
            package, description, DomainRegistry::instance()->getMetaRegistryFactory(), Package());
    }
}

void createMetaPackage(PackageIntf*& package,
                       MetaPackageDescription const& description,
                       Factory const& factory,
                       Package const& parent) {
    if (package != nullptr) {
        return;
    }
    try {
        createElements(package, description, factory, parent);
    } catch (...) {
        forgetMetaPackage(package, description);
        throw;
    }
}

void updateMetaPackage(PackageIntf* package,
                       MetaPackageDescription const& description,
                       Factory const& factory) {
    for (MetaClassFunctions const& each : description.classes) {
        each.update(factory);
    }
    applyTags(description.tags);
    staticApplyTag("qob_metamodel", description.dottedName, package);
}

void destroyMetaPackage(PackageIntf*& package,
                        MetaPackageDescription const& description,
                        Factory const& factory,
                        Package const& in) {
    if (package == nullptr) {
        return;
    }
    Package const ending(package, in.getDeviant());
    ending.getDeviant().assertWritable(package); // before anything changes
    for (MetaClassFunctions const& each : description.table) {
        each.destroy(factory, ending);
    }
    keepDataTypes(description, ending.getDeviant());
    internal::keepValue(ending.getDeviant(), package);
    ending.destroy();
    forgetDataTypes(description);
    package = nullptr;
}

void forgetMetaPackage(PackageIntf*& package, MetaPackageDescription const& description) noexcept {
    for (MetaClassFunctions const& each : description.classes) {
        each.forget();
    }
    forgetDataTypes(description);
    package = nullptr;
}

} // namespace QOB
