#include "velum_foundation/zorvane/metamodel.h"

#include "qob/kernel/deviant/countedpointer.h"
#include "qob/kernel/value/valuebox.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/factory.h"
#include "qob/qob/transaction.h"
#include "qob/qob/typeinforegistry.h"
#include "velum_foundation/zorvane/metamodel/foundation/nsmetaregistry/zorvanemetamodelfoundationmetapackage.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationvisibilitykind.h"

#include <string>
#include <utility>

namespace Zorvane {

namespace {

using QOB::NSInterface::PackageIntf;

using metamodel::foundation::VisibilityKind;

/// The base metamodel's data type, known by its name: with its live element, and from texts.
class KnownValues {
public:
    KnownValues() = default;
    KnownValues(KnownValues const&) = delete;
    KnownValues& operator=(KnownValues const&) = delete;
    ~KnownValues() { takeOut(); }

    /// In the place of an entry whose live element a rollback took. Raises QOB::Exception, with
    /// nothing entered, if the name is taken.
    void enter(QOB::Deviant deviant) {
        takeOut();
        QOB::ImmutableDataType const element(
            metamodel::foundation::NSImplementation::staticGetVisibilityKindMeta(), deviant);
        std::string const name = VisibilityKind::getTypeName();
        QOB::ValueObjectFactory::registerType<VisibilityKind>(VisibilityKind::getTypeInfo());
        try {
            QOB::TypeInfoRegistry::registerMetaType(name, VisibilityKind::getTypeInfo(), element);
        } catch (QOB::Exception const&) {
            QOB::ValueObjectFactory::unregisterType(name);
            throw;
        }
        areEntered_ = true;
    }

private:
    void takeOut() noexcept {
        if (std::exchange(areEntered_, false)) {
            QOB::ValueObjectFactory::unregisterType(VisibilityKind::getTypeName());
            QOB::TypeInfoRegistry::unregisterMetaType(VisibilityKind::getTypeName());
        }
    }

    bool areEntered_ = false;
};

/// The two packages, counted: a rollback may take them out of the model while the pointers are out.
struct MetaPackages {
    QOB::CountedPointer<PackageIntf> zorvane;
    QOB::CountedPointer<PackageIntf> metamodel;
    PackageIntf* metamodelPointer = nullptr;
    KnownValues values;

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
        packages.values.enter(model.getDeviant());
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
