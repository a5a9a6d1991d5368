#include "valuetypes.h"

#include "metapackage.h"
#include "qob/kernel/value/valuebox.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/log.h"
#include "qob/qob/transaction.h"
#include "qob/qob/typeinforegistry.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypescompumethodcategory.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfloatingpointkind.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h"

#include <exception>

namespace Zorvane::metamodel::types::NSImplementation {

namespace {

template <class Value, class Element>
void enter(Element* meta, QOB::Deviant deviant) {
    QOB::TypeInfoRegistry::registerMetaType(
        Value::getTypeName(), Value::getTypeInfo(), QOB::ImmutableDataType(meta, deviant));
    QOB::ValueObjectFactory::registerType<Value>(Value::getTypeInfo());
}

template <class... Value>
void remove() {
    (QOB::ValueObjectFactory::unregisterType(Value::getTypeName()), ...);
    (QOB::TypeInfoRegistry::unregisterMetaType(Value::getTypeName()), ...);
}

} // namespace

void registerValueTypes() {
    QOB::Model const registry = QOB::DomainRegistry::instance()->getMetaRegistry();
    {
        QOB::Transaction transaction(registry);
        staticInitializeTypesMeta();
        transaction.commit();
    }
    QOB::Deviant const deviant = registry.getDeviant();
    enter<DataSize>(staticGetDataSizeMeta(), deviant);
    enter<Time>(staticGetTimeMeta(), deviant);
    enter<FloatingPointKind>(staticGetFloatingPointKindMeta(), deviant);
    enter<DataSizeUnitKind>(staticGetDataSizeUnitKindMeta(), deviant);
    enter<TimeUnitKind>(staticGetTimeUnitKindMeta(), deviant);
    enter<CompuMethodCategory>(staticGetCompuMethodCategoryMeta(), deviant);
}

void unregisterValueTypes() noexcept {
    try {
        remove<DataSize,
               Time,
               FloatingPointKind,
               DataSizeUnitKind,
               TimeUnitKind,
               CompuMethodCategory>();
        QOB::Transaction transaction(QOB::DomainRegistry::instance()->getMetaRegistry());
        staticTerminateTypesMeta();
        transaction.commit();
    } catch (std::exception const& failure) {
        qobLogDebug("Taking down the types meta-registry failed: %s", failure.what());
    }
}

} // namespace Zorvane::metamodel::types::NSImplementation
