#include "qob/qob/nsinterface/factoryobjectintf.h"

namespace QOB::NSInterface {

namespace internal = CooperativeVisitor::internal;

internal::MethodInfo FactoryObjectIntf::getVisitMethod(internal::MethodTable const& table) const {
    return internal::visitMethod(this, table);
}

void* FactoryObjectIntf::cast(internal::ClassInfo const& info) const {
    return internal::castTo(this, info);
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
