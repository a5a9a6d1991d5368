#include "velum_foundation/zorvane/metamodel.h"

#include "qob/kernel/deviant/countedpointer.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/factory.h"
#include "qob/qob/transaction.h"
#include "velum_foundation/zorvane/metamodel/foundation/nsmetaregistry/zorvanemetamodelfoundationmetapackage.h"

namespace Zorvane {

namespace {

using QOB::NSInterface::PackageIntf;

/// The two packages, counted: a rollback may take them out of the model while the pointers are out.
struct MetaPackages {
    QOB::CountedPointer<PackageIntf> zorvane;
    QOB::CountedPointer<PackageIntf> metamodel;
    PackageIntf* metamodelPointer = nullptr;

    bool exist(QOB::Deviant deviant) const {
        return zorvane && metamodel && zorvane.get()->deviant_isValid(deviant) &&
               metamodel.get()->deviant_isValid(deviant);
    }
};

QOB::Package createPackage(QOB::Factory const& factory, char const* name) {
    QOB::Package package = factory.createPackage(name);
    package.setUri(QOB::String(QOB::DomainRegistry::instance()->getDomainCanonicalUri(name)));
    return package;
}

MetaPackages& metaPackages() {
    static MetaPackages packages;
    QOB::DomainRegistry const& registry = *QOB::DomainRegistry::instance();
    QOB::Model const model = registry.getMetaRegistry();
    if (!packages.exist(model.getDeviant())) {
        QOB::Transaction transaction(model);
        QOB::Package const zorvane = createPackage(registry.getMetaRegistryFactory(), "Zorvane");
        QOB::Package const domains = createPackage(registry.getMetaRegistryFactory(), "metamodel");
        zorvane.setContainerQOB(QOB::ClassObject(model));
        domains.setParent(zorvane);
        packages.zorvane = QOB::CountedPointer(zorvane.get());
        packages.metamodel = QOB::CountedPointer(domains.get());
        packages.metamodelPointer = domains.get();
        // This library's own package; it asks for the one around it again.
        metamodel::foundation::NSImplementation::staticForgetFoundationMetaPackage();
        metamodel::foundation::NSImplementation::staticInitializeFoundationMeta();
        transaction.commit();
    }
    return packages;
}

} // namespace

QOB::Package NSImplementation::staticGetZorvaneMetaModel(QOB::Model model) {
    return {metaPackages().zorvane.get(), model.getDeviant()};
}

PackageIntf*& metamodel::NSImplementation::staticGetMetamodelMetaPackage() {
    return metaPackages().metamodelPointer;
}

} // namespace Zorvane
