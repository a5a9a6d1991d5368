#include "qob/qob/package.h"

#include "metaobject.h"
#include "namedelementstate.h"
#include "qob/kernel/factory/create.h"
#include "qob/kernel/property/assignrules.h"
#include "qob/kernel/property/multivalued.h"
#include "qob/kernel/property/optionalvalue.h"
#include "qob/kernel/property/ownerend.h"
#include "qob/kernel/property/reflective.h"
#include "qob/qob/model.h"
#include "qob/qob/type.h"

#include <array>

namespace QOB {

using NSInterface::PackageIntf;
using NSInterface::TypeIntf;

namespace {

struct PackageDescription {
    using Interface = PackageIntf;
    static constexpr char const* name = PackageIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Single<PackageIntf::UriId,
                                            &PackageIntf::getUri,
                                            &PackageIntf::hasUri,
                                            &PackageIntf::setUri,
                                            &PackageIntf::removeUri>,
                         reflective::Single<PackageIntf::ParentId,
                                            &PackageIntf::getParent,
                                            &PackageIntf::hasParent,
                                            &PackageIntf::setParent,
                                            &PackageIntf::removeParent,
                                            &PackageIntf::setOnlyParent,
                                            &PackageIntf::removeOnlyParent>,
                         reflective::Many<PackageIntf::NestedPackagesId,
                                          &PackageIntf::getNestedPackages,
                                          &PackageIntf::getNestedPackagesWithoutAssociation>,
                         reflective::Many<PackageIntf::OwnedTypesId,
                                          &PackageIntf::getOwnedTypes,
                                          &PackageIntf::getOwnedTypesWithoutAssociation>>;
};

struct TypeDescription {
    using Interface = TypeIntf;
    static constexpr char const* name = TypeIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties = reflective::List<reflective::Single<TypeIntf::PackageId,
                                                           &TypeIntf::getPackage,
                                                           &TypeIntf::hasPackage,
                                                           &TypeIntf::setPackage,
                                                           &TypeIntf::removePackage,
                                                           &TypeIntf::setOnlyPackage,
                                                           &TypeIntf::removeOnlyPackage>>;
};

/// Raises if the package would lie within itself.
void requireOutside(PackageIntf const* package, Deviant deviant, Package const& parent) {
    for (Package above = parent; above.isValid(); above = above->getParent(deviant)) {
        QOB_REQUIRE(above.get() != package, "A package cannot lie within itself.");
    }
}

/// Puts the package directly in its model.
void setContainingModel(PackageIntf* package, Deviant deviant, Model const& model) {
    property::requireSameModel(package,
                               deviant,
                               model,
                               NSInterface::ClassObjectIntf::sIntrospectiveMethods,
                               PackageIntf::ContainerQOBId);
    if (package->getContainerQOB(deviant) != ClassObject(model)) {
        package->removeContainerQOB(deviant);
        model->internal_ownContainees(deviant).push_back(ClassObject(package, deviant));
    }
}

} // namespace

namespace NSInterface {

constinit IntrospectiveMethods PackageIntf::sIntrospectiveMethods =
    reflective::methodsOf<PackageDescription>();
constinit IntrospectiveMethods TypeIntf::sIntrospectiveMethods =
    reflective::methodsOf<TypeDescription>();

// Package ----------------------------------------------------------------------------------------

bool PackageIntf::hasUri(Deviant deviant) const {
    return property::get<&PackageIntf::hasUri>(this, deviant);
}
void PackageIntf::removeUri(Deviant deviant) {
    property::removeOptional<&PackageIntf::hasUri, &PackageIntf::removeUri>(this, deviant);
}
void PackageIntf::setUri(Deviant deviant, String const& uri) {
    property::setOptional<&PackageIntf::getUri, &PackageIntf::setUri, &PackageIntf::removeUri>(
        this, deviant, uri);
}
String PackageIntf::getUri(Deviant deviant) const {
    return property::get<&PackageIntf::getUri>(this, deviant);
}

bool PackageIntf::hasParent(Deviant deviant) const {
    return getParent(deviant).isValid();
}
void PackageIntf::removeParent(Deviant deviant) {
    if (hasParent(deviant)) {
        property::removeOwner<&PackageIntf::getNestedPackagesWithoutAssociation, Package>(this,
                                                                                          deviant);
    }
}
void PackageIntf::setParent(Deviant deviant, Package const& parent) {
    requireOutside(this, deviant, parent);
    property::setOwner<&PackageIntf::getNestedPackagesWithoutAssociation,
                       &PackageIntf::setOnlyParent>(
        this, deviant, parent, sIntrospectiveMethods, ParentId);
}
Package PackageIntf::getParent(Deviant deviant) const {
    return property::getOwner<Package>(this, deviant);
}
void PackageIntf::removeOnlyParent(Deviant deviant) {
    removeOnlyContainerQOB(deviant);
}
void PackageIntf::setOnlyParent(Deviant deviant, Package const& parent) {
    requireOutside(this, deviant, parent);
    property::setOnlyOwner<&PackageIntf::getNestedPackagesWithoutAssociation,
                           &PackageIntf::removeParent>(
        this, deviant, parent, sIntrospectiveMethods, ParentId);
}

Sequence<Package> PackageIntf::getNestedPackages(Deviant deviant) {
    return property::elementsWithOwner<Package>(this,
                                                deviant,
                                                sIntrospectiveMethods,
                                                NestedPackagesId,
                                                PackageIntf::sIntrospectiveMethods,
                                                ParentId);
}
Sequence<Package> PackageIntf::getNestedPackagesWithoutAssociation(Deviant deviant) {
    return property::elements<Package>(this, deviant, sIntrospectiveMethods, NestedPackagesId);
}
Sequence<Type> PackageIntf::getOwnedTypes(Deviant deviant) {
    return property::elementsWithOwner<Type>(this,
                                             deviant,
                                             sIntrospectiveMethods,
                                             OwnedTypesId,
                                             TypeIntf::sIntrospectiveMethods,
                                             TypeIntf::PackageId);
}
Sequence<Type> PackageIntf::getOwnedTypesWithoutAssociation(Deviant deviant) {
    return property::elements<Type>(this, deviant, sIntrospectiveMethods, OwnedTypesId);
}

void PackageIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    if (!container.isValid()) {
        removeContainerQOB(deviant);
    } else if (Model const model(container); model.isValid()) {
        setContainingModel(this, deviant, model);
    } else {
        Package const parent(container);
        QOB_REQUIRE(parent.isValid(), "The container of a package is a package or its model.");
        setParent(deviant, parent);
    }
}
void PackageIntf::removeContainerQOB(Deviant deviant) {
    if (hasParent(deviant)) {
        removeParent(deviant);
    } else {
        ClassObjectIntf::removeContainerQOB(deviant);
    }
}

void PackageIntf::internal_deviationAssign(Deviant deviant,
                                           ObjectIntf* source,
                                           Deviant sourceDeviant) {
    property::assignBlocks<PackageIntf, PackageIntf, NamedElementIntf, ClassObjectIntf>(
        this, deviant, source, sourceDeviant);
}

void PackageIntf::internal_assignBlock(Deviant deviant,
                                       PackageIntf const* source,
                                       Deviant sourceDeviant) {
    property::assignEach<property::AssignOptional<&PackageIntf::hasUri,
                                                  &PackageIntf::getUri,
                                                  &PackageIntf::setUri,
                                                  &PackageIntf::removeUri>,
                         property::AssignObjects<&PackageIntf::getNestedPackages>,
                         property::AssignObjects<&PackageIntf::getOwnedTypes>>(
        this, deviant, source, sourceDeviant);
}

// Type -------------------------------------------------------------------------------------------

bool TypeIntf::hasPackage(Deviant deviant) const {
    return getPackage(deviant).isValid();
}
void TypeIntf::removePackage(Deviant deviant) {
    if (hasPackage(deviant)) {
        property::removeOwner<&PackageIntf::getOwnedTypesWithoutAssociation, Package>(this,
                                                                                      deviant);
    }
}
void TypeIntf::setPackage(Deviant deviant, Package const& package) {
    property::setOwner<&PackageIntf::getOwnedTypesWithoutAssociation, &TypeIntf::setOnlyPackage>(
        this, deviant, package, sIntrospectiveMethods, PackageId);
}
Package TypeIntf::getPackage(Deviant deviant) const {
    return property::getOwner<Package>(this, deviant);
}
void TypeIntf::removeOnlyPackage(Deviant deviant) {
    removeOnlyContainerQOB(deviant);
}
void TypeIntf::setOnlyPackage(Deviant deviant, Package const& package) {
    property::setOnlyOwner<&PackageIntf::getOwnedTypesWithoutAssociation, &TypeIntf::removePackage>(
        this, deviant, package, sIntrospectiveMethods, PackageId);
}

void TypeIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    Package const package(container);
    QOB_REQUIRE(package.isValid() || !container.isValid(), "The container of a type is a package.");
    setPackage(deviant, package);
}
void TypeIntf::removeContainerQOB(Deviant deviant) {
    removePackage(deviant);
}

} // namespace NSInterface

namespace {

class PackageDeviantImpl final
    : public NSImplementation::NamedElementState<PackageDeviantImpl, PackageIntf> {
public:
    struct Fields : NSImplementation::NamedElementFields {
        String uri;
        NSImplementation::OwnedList<Package> nestedPackages;
        NSImplementation::OwnedList<Type> ownedTypes;
    };

    bool hasUri(Deviant) const override { return fields_.uri.isValid(); }
    void removeUri(Deviant) override { fields_.uri = String(); }
    void setUri(Deviant, String const& uri) override { fields_.uri = uri; }
    String getUri(Deviant) const override { return fields_.uri; }
    Sequence<Package> getNestedPackages(Deviant deviant) override {
        return fields_.nestedPackages.read(deviant);
    }
    Sequence<Package> getNestedPackagesWithoutAssociation(Deviant deviant) override {
        return fields_.nestedPackages.write(deviant);
    }
    Sequence<Type> getOwnedTypes(Deviant deviant) override {
        return fields_.ownedTypes.read(deviant);
    }
    Sequence<Type> getOwnedTypesWithoutAssociation(Deviant deviant) override {
        return fields_.ownedTypes.write(deviant);
    }

    std::array<ReferenceStorage const*, 2> ownedObjects() const {
        return {fields_.nestedPackages.storage(), fields_.ownedTypes.storage()};
    }

    Fields fields_;
};

class PackageImpl final : public NSImplementation::MetaObject<PackageDeviantImpl,
                                                              PackageIntf,
                                                              NSInterface::NamespaceIntf,
                                                              NSInterface::NamedElementIntf> {};

} // namespace

Package Package::create(Model const& model) {
    return createObject<Package, PackageImpl>(model, NSImplementation::Unnamed());
}
Package Package::create(Model const& model, String const& name) {
    return createObject<Package, PackageImpl>(model, NSImplementation::Named{name});
}
Package Package::createWithId(Model const& model, Integer const& id) {
    return createObject<Package, PackageImpl>(model, id);
}

} // namespace QOB
