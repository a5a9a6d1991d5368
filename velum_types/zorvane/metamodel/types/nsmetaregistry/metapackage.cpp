#include "metapackage.h"

#include "qob/qob/domainregistry.h"
#include "velum_foundation/zorvane/metamodel.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypescompumethodcategory.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasizeunitkind.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfloatingpointkind.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestimeunitkind.h"

namespace Zorvane::metamodel::types::NSImplementation {

namespace {

using QOB::NSInterface::DataTypeIntf;
using QOB::NSInterface::EnumerationIntf;
using QOB::NSInterface::PackageIntf;

struct Elements {
    PackageIntf* package = nullptr;
    EnumerationIntf* compuMethodCategory = nullptr;
    EnumerationIntf* timeUnitKind = nullptr;
    EnumerationIntf* dataSizeUnitKind = nullptr;
    EnumerationIntf* floatingPointKind = nullptr;
    DataTypeIntf* time = nullptr;
    DataTypeIntf* dataSize = nullptr;
};

/// Plain pointers: the meta-registry keeps what they point at.
Elements elements;

template <class Element>
void enter(Element const& element, char const* name, QOB::Package const& package) {
    element.setName(name);
    element.setPackage(package);
    package.getOwnedTypes().push_back(element);
}

void createDataType(DataTypeIntf*& result,
                    char const* name,
                    QOB::Factory const& factory,
                    QOB::Package const& package) {
    if (result != nullptr) {
        return;
    }
    QOB::DataType const element = factory.createDataType();
    result = element.get();
    enter(element, name, package);
}

template <class Kind>
void createEnumeration(EnumerationIntf*& result,
                       char const* name,
                       QOB::Factory const& factory,
                       QOB::Package const& package) {
    if (result != nullptr) {
        return;
    }
    QOB::Enumeration const element = factory.createEnumeration();
    result = element.get();
    enter(element, name, package);
    for (auto const& [kind, text] : Kind::getLiterals()) {
        QOB::EnumerationLiteral const literal = factory.createEnumerationLiteral();
        literal.setName(text);
        literal.setEnumeration(element);
        element.getOwnedLiterals().push_back(literal);
    }
}

void createDataTypes(QOB::Factory const& factory, QOB::Package const& package) {
    createEnumeration<CompuMethodCategory>(
        elements.compuMethodCategory, "CompuMethodCategory", factory, package);
    createEnumeration<TimeUnitKind>(elements.timeUnitKind, "TimeUnitKind", factory, package);
    createEnumeration<DataSizeUnitKind>(
        elements.dataSizeUnitKind, "DataSizeUnitKind", factory, package);
    createEnumeration<FloatingPointKind>(
        elements.floatingPointKind, "FloatingPointKind", factory, package);
    createDataType(elements.time, "Time", factory, package);
    createDataType(elements.dataSize, "DataSize", factory, package);
}

} // namespace

PackageIntf*& staticInitializeTypesMeta() {
    QOB::DomainRegistry const& registry = *QOB::DomainRegistry::instance();
    if (elements.package == nullptr) {
        QOB::Package const parent(metamodel::NSImplementation::staticGetMetamodelMetaPackage(),
                                  registry.getMetaRegistry().getDeviant());
        staticCreateTypesMetaPackage(registry.getMetaRegistryFactory(), parent);
    }
    return elements.package;
}

void staticTerminateTypesMeta() {
    if (elements.package != nullptr) {
        staticDestroyTypesMetaPackage(QOB::DomainRegistry::instance()->getMetaRegistryFactory(),
                                      QOB::Package());
    }
}

void staticCreateTypesMetaPackage(QOB::Factory factory, QOB::Package parent) {
    if (elements.package != nullptr) {
        return;
    }
    try {
        QOB::Package const package = factory.createPackage();
        elements.package = package.get();
        package.setName("types");
        package.setUri(
            QOB::String(QOB::DomainRegistry::instance()->getDomainCanonicalUri("types")));
        // Without a parent it stays what every new element is, a root object of the meta-registry.
        if (parent.isValid()) {
            package.setParent(parent);
            parent.getNestedPackages().push_back(package);
        }
        createDataTypes(factory, package);
    } catch (...) {
        // The caller's transaction takes the elements back.
        elements = Elements();
        throw;
    }
}

void staticDestroyTypesMetaPackage(QOB::Factory /*factory*/, QOB::Package package) {
    if (elements.package == nullptr) {
        return;
    }
    QOB::Package(elements.package, package.getDeviant()).destroy();
    elements = Elements();
}

PackageIntf*& staticGetTypesMetaPackage() {
    return elements.package;
}

QOB::Package staticGetTypesMetaModel(QOB::Model model) {
    return {elements.package, model.getDeviant()};
}

DataTypeIntf*& staticGetDataSizeMeta() {
    return elements.dataSize;
}
DataTypeIntf*& staticGetTimeMeta() {
    return elements.time;
}
EnumerationIntf*& staticGetFloatingPointKindMeta() {
    return elements.floatingPointKind;
}
EnumerationIntf*& staticGetDataSizeUnitKindMeta() {
    return elements.dataSizeUnitKind;
}
EnumerationIntf*& staticGetTimeUnitKindMeta() {
    return elements.timeUnitKind;
}
EnumerationIntf*& staticGetCompuMethodCategoryMeta() {
    return elements.compuMethodCategory;
}

} // namespace Zorvane::metamodel::types::NSImplementation
