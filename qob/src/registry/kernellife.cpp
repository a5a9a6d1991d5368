#include "model/modelcore.h"
#include "nshandmaintained/kernelpackage.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/initialize.h"
#include "qob/qob/modelcache.h"
#include "qob/qob/nsimplementation/factoryimpl.h"
#include "registry/modulelife.h"
#include "registry/remnants.h"

#include <utility>

namespace QOB {

namespace {

bool started = false;
DomainRegistry* registry = nullptr;
Tessel::ModuleObjectDeleter* deleter = nullptr;

} // namespace

/// What the kernel's library does when it goes: the models that are left end, the meta-registry
/// last, and then the tables go that their objects needed.
struct KernelLife {
    ~KernelLife() {
        endModels();
        internal::forgetKernelPackage();
        delete std::exchange(registry, nullptr);
        internal::ModelCore::endAll(nullptr);
        delete std::exchange(deleter, nullptr);
        internal::releaseSpareBoxes();
    }
    static void makeRegistry() {
        registry = new DomainRegistry();
        try {
            internal::createKernelPackage();
        } catch (...) {
            internal::forgetKernelPackage();
            delete std::exchange(registry, nullptr);
            throw;
        }
    }
};

namespace {
/// Constructed before everything else that this library makes at run time, so it ends last.
KernelLife const life;
} // namespace

Tessel::ModuleObjectDeleter& internal::moduleObjects() {
    if (deleter == nullptr) {
        deleter = new Tessel::ModuleObjectDeleter();
    }
    return *deleter;
}

bool initialize() {
    if (!started) {
        DomainRegistry::instance();
        started = true;
    }
    return true;
}

void endModels() noexcept {
    internal::ModelCore::endAll(registry != nullptr ? registry->getMetaRegistry().get() : nullptr);
}

void internal::forgetKeptParts() noexcept {
    if (registry != nullptr) {
        ModelCore::of(registry->getMetaRegistry().getDeviant()).forgetParts();
    }
}

DomainRegistry* DomainRegistry::instance() {
    if (registry == nullptr) {
        KernelLife::makeRegistry();
    }
    return registry;
}

DomainRegistry::DomainRegistry()
    : metaRegistry_(NSInterface::FactoryIntf::createNewModel()),
      metaRegistryFactory_(new NSImplementation::FactoryImpl(metaRegistry_),
                           metaRegistry_.getDeviant()) {
}

DomainRegistry::~DomainRegistry() {
    metaRegistry_.destroy();
}

std::wstring DomainRegistry::getDomainCanonicalUri(String const& domain) const {
    return std::wstring(canonicalUri(domain));
}

String DomainRegistry::canonicalUri(String const& domain) {
    std::string uri = "qob://metamodels/";
    uri += domain.view();
    return uri;
}

} // namespace QOB
