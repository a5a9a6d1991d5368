#include "velum_types/zorvane/metamodel/types/initialize.h"

#include "qob/qob/initialize.h"
#include "qob/qob/log.h"
#include "qob/qob/model.h"
#include "tessel/moduleobject.h"
#include "velum_foundation/zorvane/metamodel.h"
#include "velum_types/zorvane/metamodel/types/nshandmaintained/module.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/typeregistration.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/zorvanemetamodeltypesmetapackage.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfactory.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesnames.h"

#include <boost/checked_delete.hpp>

#include <memory>
#include <utility>

namespace Zorvane::metamodel::types {

namespace {

/// The registration of the package, made by the constructor.
class InitializerClass {
public:
    InitializerClass() {
        NSImplementation::registerTypes();
        try {
            NSImplementation::bindHandleNames();
        } catch (...) {
            NSImplementation::unregisterTypes();
            NSImplementation::staticForgetTypesMetaPackage();
            throw;
        }
    }
    InitializerClass(InitializerClass const&) = delete;
    InitializerClass& operator=(InitializerClass const&) = delete;
    ~InitializerClass() { NSImplementation::unregisterTypes(); }
};

template <class T>
using ModuleObjectOf = Tessel::ModuleObjectImpl<T*, boost::checked_deleter<T>>;

bool initialized = false;
InitializerClass* initializer = nullptr;

/// What ends with this library. Models that are left go first: their objects run this library's
/// code.
struct TypesLife {
    Tessel::ModuleObjectDeleter* moduleObjects = nullptr;

    ~TypesLife() {
        QOB::endModels();
        delete std::exchange(moduleObjects, nullptr);
        QOB::leaveLibrary(this);
    }
};

TypesLife life;

QOB::FactoryObject createFactory(QOB::Model model) {
    return Factory(NSInterface::FactoryIntf::createNewFactory(model), model.getDeviant());
}

} // namespace

Tessel::ModuleObjectDeleter& Module::moduleObjects() {
    if (life.moduleObjects == nullptr) {
        life.moduleObjects = new Tessel::ModuleObjectDeleter();
    }
    return *life.moduleObjects;
}

bool initialize() {
    if (initialized) {
        return true;
    }
    qobLogDebug("Initializing the types meta-registry.");
    // Never holds a model: its place in the order of module objects is what counts.
    Module::moduleObjects().append(std::make_unique<ModuleObjectOf<QOB::Model>>(nullptr));

    // One counted object lives and ends before the kernel starts.
    class InitializeCleanup : public QOB::ReferenceCountingIntf {
    public:
        ~InitializeCleanup() override = default;
    };
    static InitializeCleanup* cleanup = new InitializeCleanup;
    delete std::exchange(cleanup, nullptr);

    QOB::initialize();
    // Everything that the registration makes lies inside the section. A failure leaves it open.
    QOB::Cleanup::beginMetaRegistrySection();
    if (initializer == nullptr) {
        initializer = new InitializerClass;
        Module::moduleObjects().append(
            std::make_unique<ModuleObjectOf<InitializerClass>>(initializer));
    }
    initialized = true;
    QOB::Cleanup::endMetaRegistrySection();
    return initialized;
}

} // namespace Zorvane::metamodel::types

Zorvane::metamodel::types::TypesConfiguration* Zorvane_metamodel_types_getConfiguration(
    Zorvane::metamodel::types::TypesConfiguration* configuration) {
    namespace types = Zorvane::metamodel::types;
    configuration->createFactory = &types::createFactory;
    configuration->getMetaModel = &Zorvane::NSImplementation::staticGetZorvaneMetaModel;
    configuration->createModel = &types::NSInterface::FactoryIntf::createNewModel;
    return configuration;
}
