#include "qob/qob/nsinterface/valueobjectintf.h"

#include "qob/qob/datatype.h"
#include "qob/qob/typeinforegistry.h"

namespace QOB::NSInterface {

namespace internal = CooperativeVisitor::internal;

internal::MethodInfo ValueObjectIntf::getVisitMethod(internal::MethodTable const& table) const {
    return internal::visitMethod(this, table);
}
void* ValueObjectIntf::cast(internal::ClassInfo const& info) const {
    return internal::castTo(this, info);
}
ImmutableType ValueObjectIntf::getMetaType(Deviant) const {
    return TypeInfoRegistry::getMetaType(getValueTypeName());
}
void const* ValueObjectIntf::findValue(std::type_info const&) const noexcept {
    return nullptr;
}

} // namespace QOB::NSInterface
