#include "qob/qob/nsinterface/factoryobjectintf.h"

#include "meta/kernelpackage.h"
#include "qob/kernel/property/reflective.h"
#include "qob/qob/model.h"

namespace QOB::NSInterface {

namespace {

struct FactoryObjectDescription {
    using Interface = FactoryObjectIntf;
    static constexpr char const* name = FactoryObjectIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties = reflective::List<>;
};

MetaPropertyDescription* factoryProperties[] = {nullptr};

} // namespace

constinit IntrospectiveMethods FactoryObjectIntf::sIntrospectiveMethods =
    reflective::methodsOf<FactoryObjectDescription>(factoryProperties,
                                                    QOB::internal::belowClassObject,
                                                    &QOB::internal::kernelPackage);

namespace internal = CooperativeVisitor::internal;

internal::MethodInfo FactoryObjectIntf::getVisitMethod(internal::MethodTable const& table) const {
    return internal::visitMethod(this, table);
}

void* FactoryObjectIntf::cast(internal::ClassInfo const& info) const {
    return internal::castTo(this, info);
}

void FactoryObjectIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    if (castObject<ModelIntf>(container.get()) != nullptr) {
        setOnlyContainerQOB(deviant, container);
    } else {
        ClassObjectIntf::setContainerQOB(deviant, container);
    }
}

Object FactoryObjectIntf::createFromString(Deviant, String) {
    return {};
}
Object FactoryObjectIntf::createFromString(Deviant, String, String) {
    return {};
}
Object FactoryObjectIntf::createFromString(Deviant, String, Integer) {
    return {};
}

FactoryObjectIntf* FactoryObjectIntf::getReadDeviantI(Deviant, FactoryObjectIntf const*) const {
    return nullptr;
}
FactoryObjectIntf* FactoryObjectIntf::getWriteDeviantI(Deviant, FactoryObjectIntf const*) const {
    return nullptr;
}

} // namespace QOB::NSInterface
