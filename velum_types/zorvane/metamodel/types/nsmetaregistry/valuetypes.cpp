#include "valuetypes.h"

#include "qob/kernel/value/valuebox.h"
#include "qob/qob/typeinforegistry.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypescompumethodcategory.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfloatingpointkind.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h"

namespace Zorvane::metamodel::types::NSImplementation {

namespace {

template <class... Value>
struct ValueTypes {
    static void enter() {
        (QOB::TypeInfoRegistry::registerTypeInfo(Value::getTypeName(), Value::getTypeInfo()), ...);
        (QOB::ValueObjectFactory::registerType<Value>(Value::getTypeInfo()), ...);
    }
    static void remove() noexcept {
        (QOB::ValueObjectFactory::unregisterType(Value::getTypeName()), ...);
        (QOB::TypeInfoRegistry::unregisterTypeInfo(Value::getTypeName()), ...);
    }
};

using All = ValueTypes<DataSize,
                       Time,
                       FloatingPointKind,
                       DataSizeUnitKind,
                       TimeUnitKind,
                       CompuMethodCategory>;

} // namespace

void registerValueTypes() {
    All::enter();
}

void unregisterValueTypes() noexcept {
    All::remove();
}

} // namespace Zorvane::metamodel::types::NSImplementation
