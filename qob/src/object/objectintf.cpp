#include "qob/qob/nsinterface/objectintf.h"

#include "qob/qob/assert.h"
#include "qob/qob/object.h"
#include "qob/qob/type.h"

namespace QOB::NSInterface {

namespace internal = CooperativeVisitor::internal;

void ObjectIntf::incRef() const {
}
void ObjectIntf::decRef() const {
}
int ObjectIntf::numRef() const {
    return 0;
}

internal::MethodInfo ObjectIntf::getVisitMethod(internal::MethodTable const& table) const {
    return internal::visitMethod(this, table);
}
void* ObjectIntf::cast(internal::ClassInfo const& info) const {
    return internal::castTo(this, info);
}

void ObjectIntf::internal_disconnect(Deviant) {
}
void ObjectIntf::internal_discard(Deviant, bool) {
}
void ObjectIntf::destroy(Deviant) {
}
bool ObjectIntf::deviant_isValid(Deviant) const {
    return false;
}
void ObjectIntf::deviant_destroyState(ObjectIntf*) {
}
void ObjectIntf::deviant_markModelDestroyed() {
}
void ObjectIntf::deviant_commitTransientState(Deviant) {
}
ObjectIntf* ObjectIntf::deviant_getCopyOfDeviation(Deviant) {
    return nullptr;
}
ObjectIntf* ObjectIntf::internal_getDeviation(Deviant) {
    return nullptr;
}
void ObjectIntf::internal_setDeviation(Deviant, ObjectIntf*) {
}
ObjectIntf* ObjectIntf::internal_createDeviation(Deviant) {
    return nullptr;
}
void ObjectIntf::internal_destroyDeviation(Deviant) {
}
void ObjectIntf::internal_deviationAssign(Deviant, ObjectIntf*, Deviant) {
}
Deviant ObjectIntf::getRootDeviant() const {
    return {};
}

char const* ObjectIntf::getLumvoName(bool) const {
    QOB_FAIL("Internal Error");
}

String ObjectIntf::toString(Deviant) const {
    return {};
}
ImmutableObject ObjectIntf::convertFromString(Deviant, String) {
    return {};
}
ImmutableType ObjectIntf::getMetaType(Deviant) const {
    return {};
}

ObjectIntf* ObjectIntf::getReadDeviantI(Deviant, ObjectIntf const*) const {
    return nullptr;
}
ObjectIntf* ObjectIntf::getWriteDeviantI(Deviant, ObjectIntf const*) const {
    return nullptr;
}

} // namespace QOB::NSInterface
