#include "ownercheck.h"
#include "qob/kernel/property/otherend.h"
#include "qob/kernel/property/ownerend.h"
#include "qob/qob/model.h"
#include "qob/qob/package.h"

namespace QOB {

namespace {

using NSInterface::PackageIntf;
using PackagesOfParent =
    property::ManyAtOtherEnd<&PackageIntf::getNestedPackages,
                             &PackageIntf::getNestedPackagesWithoutAssociation>;

/// The number of "parent" among the properties of a package.
constexpr unsigned parentId = 2;

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

/// A package that lies in its model stays there.
void PackageIntf::removeParent(Deviant deviant) {
    if (hasParent(deviant)) {
        property::removeOwner<PackagesOfParent, Package>(this, deviant);
    }
}

void PackageIntf::setParent(Deviant deviant, Package const& value) {
    requireOutside(this, deviant, value);
    property::setOwner<PackagesOfParent, &PackageIntf::setOnlyParent>(
        this, deviant, value, sIntrospectiveMethods, parentId);
}

void PackageIntf::setOnlyParent(Deviant deviant, Package const& value) {
    requireOutside(this, deviant, value);
    property::setOnlyOwner<PackagesOfParent, &PackageIntf::removeParent>(
        this, deviant, value, sIntrospectiveMethods, parentId);
}

void PackageIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    if (Model const model(container); model.isValid()) {
        setContainingModel(this, deviant, model);
    } else if (!container.isValid()) {
        removeContainerQOB(deviant);
    } else {
        setParent(deviant,
                  QOB::internal::ownerOf<Package>(
                      container, "The container of a package is a package or its model."));
    }
}

} // namespace NSInterface

} // namespace QOB
