#include "qob/qob/nsinterface/classobjectintf.h"

#include "qob/kernel/property/assignrules.h"
#include "qob/kernel/property/reference.h"
#include "qob/qob/model.h"

namespace QOB::NSInterface {

namespace visitor = CooperativeVisitor::internal;

visitor::MethodInfo ClassObjectIntf::getVisitMethod(visitor::MethodTable const& table) const {
    return visitor::visitMethod(this, table);
}
void* ClassObjectIntf::cast(visitor::ClassInfo const& info) const {
    return visitor::castTo(this, info);
}

bool ClassObjectIntf::hasObjectId(Deviant) const {
    return false;
}
void ClassObjectIntf::removeObjectId(Deviant) {
}
void ClassObjectIntf::setObjectId(Deviant, Integer const&) {
}
Integer ClassObjectIntf::getObjectId(Deviant) const {
    return {};
}

bool ClassObjectIntf::hasUri(Deviant deviant) const {
    return getUri(deviant).isValid();
}

void ClassObjectIntf::removeUri(Deviant) {
    QOB_FAIL("The URI of an object follows from its model and its id and cannot be removed.");
}

void ClassObjectIntf::setUri(Deviant, String const&) {
    QOB_FAIL("The URI of an object follows from its model and its id and cannot be set.");
}

String ClassObjectIntf::getUri(Deviant deviant) const {
    Model const model = getModelQOB(deviant);
    Integer const id = getObjectId(deviant);
    if (!model.isValid() || !model.hasUri() || !id.isValid()) {
        return {};
    }
    return std::string(model.getUri()) + "#" + std::string(id.toString());
}

// The model -----------------------------------------------------------------------------------

bool ClassObjectIntf::hasModelQOB(Deviant deviant) const {
    return getModelQOB(deviant).isValid();
}
void ClassObjectIntf::removeModelQOB(Deviant deviant) {
    removeOnlyModelQOB(deviant);
}
void ClassObjectIntf::setModelQOB(Deviant deviant, Model const& model) {
    property::setReference<&ClassObjectIntf::getModelQOB,
                           &ClassObjectIntf::setModelQOB,
                           &ClassObjectIntf::removeModelQOB>(
        this, deviant, model, sIntrospectiveMethods, ModelQOBId);
}
Model ClassObjectIntf::getModelQOB(Deviant deviant) const {
    return property::get<&ClassObjectIntf::getModelQOB>(this, deviant);
}
void ClassObjectIntf::removeOnlyModelQOB(Deviant deviant) {
    property::removeOnlyReference<&ClassObjectIntf::getModelQOB, &ClassObjectIntf::setModelQOB>(
        this, deviant, sIntrospectiveMethods, ModelQOBId);
}
void ClassObjectIntf::setOnlyModelQOB(Deviant deviant, Model const& model) {
    property::setOnlyReference<&ClassObjectIntf::getModelQOB, &ClassObjectIntf::setModelQOB>(
        this, deviant, model, sIntrospectiveMethods, ModelQOBId);
}

// The container -------------------------------------------------------------------------------

bool ClassObjectIntf::hasContainerQOB(Deviant deviant) const {
    return getContainerQOB(deviant).isValid();
}
void ClassObjectIntf::removeContainerQOB(Deviant deviant) {
    removeOnlyContainerQOB(deviant);
}
void ClassObjectIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    property::requireSameModel(deviant, container, sIntrospectiveMethods, ContainerQOBId);
    property::setReference<&ClassObjectIntf::getContainerQOB,
                           &ClassObjectIntf::setContainerQOB,
                           &ClassObjectIntf::removeContainerQOB>(
        this, deviant, container, sIntrospectiveMethods, ContainerQOBId);
}
ClassObject ClassObjectIntf::getContainerQOB(Deviant deviant) const {
    return property::get<&ClassObjectIntf::getContainerQOB>(this, deviant);
}
void ClassObjectIntf::removeOnlyContainerQOB(Deviant deviant) {
    property::removeOnlyReference<&ClassObjectIntf::getContainerQOB,
                                  &ClassObjectIntf::setContainerQOB>(
        this, deviant, sIntrospectiveMethods, ContainerQOBId);
}
void ClassObjectIntf::setOnlyContainerQOB(Deviant deviant, ClassObject const& container) {
    property::requireSameModel(deviant, container, sIntrospectiveMethods, ContainerQOBId);
    property::setOnlyReference<&ClassObjectIntf::getContainerQOB,
                               &ClassObjectIntf::setContainerQOB>(
        this, deviant, container, sIntrospectiveMethods, ContainerQOBId);
}

void ClassObjectIntf::internal_deviationAssign(Deviant deviant,
                                               ObjectIntf* source,
                                               Deviant sourceDeviant) {
    property::assignBlocks<ClassObjectIntf, ClassObjectIntf>(this, deviant, source, sourceDeviant);
}

void ClassObjectIntf::internal_assignBlock(Deviant deviant,
                                           ClassObjectIntf const* source,
                                           Deviant sourceDeviant) {
    property::assignEach<property::AssignReference<&ClassObjectIntf::hasModelQOB,
                                                   &ClassObjectIntf::getModelQOB,
                                                   &ClassObjectIntf::setModelQOB,
                                                   &ClassObjectIntf::removeModelQOB>,
                         property::AssignReference<&ClassObjectIntf::hasContainerQOB,
                                                   &ClassObjectIntf::getContainerQOB,
                                                   &ClassObjectIntf::setContainerQOB,
                                                   &ClassObjectIntf::removeContainerQOB>>(
        this, deviant, source, sourceDeviant);
}

ClassObjectIntf* ClassObjectIntf::getReadDeviantI(Deviant, ClassObjectIntf const*) const {
    return nullptr;
}
ClassObjectIntf* ClassObjectIntf::getWriteDeviantI(Deviant, ClassObjectIntf const*) const {
    return nullptr;
}

} // namespace QOB::NSInterface
