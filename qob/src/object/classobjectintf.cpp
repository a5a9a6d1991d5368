#include "qob/qob/nsinterface/classobjectintf.h"

#include "qob/kernel/containers/sequence/views/combinedsequence.h"
#include "qob/kernel/deviant/sparseproperties.h"
#include "qob/kernel/property/assignsparse.h"
#include "qob/kernel/property/container.h"
#include "qob/kernel/property/multivalued.h"
#include "qob/kernel/property/optionalvalue.h"
#include "qob/kernel/property/reference.h"
#include "qob/kernel/property/twoended.h"
#include "qob/qob/class.h"
#include "qob/qob/externaltoolinfo.h"
#include "qob/qob/model.h"
#include "qob/qob/stereotypeobject.h"

namespace QOB::NSInterface {

namespace visitor = CooperativeVisitor::internal;

visitor::MethodInfo ClassObjectIntf::getVisitMethod(visitor::MethodTable const& table) const {
    return visitor::visitMethod(this, table);
}
void* ClassObjectIntf::cast(visitor::ClassInfo const& info) const {
    return visitor::castTo(this, info);
}

ImmutableType ClassObjectIntf::getMetaType(Deviant deviant) const {
    return getMetaClass(deviant);
}
ImmutableClass ClassObjectIntf::getMetaClass(Deviant) const {
    return {};
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

namespace {

/// What contained the object, if it is there, loses it.
auto leaving(ClassObjectIntf* object, Deviant deviant) {
    return [object, deviant](ClassObject const& old) {
        if (old.isValid()) {
            property::leaveContainer(object, deviant, old);
        }
    };
}

} // namespace

bool ClassObjectIntf::hasContainerQOB(Deviant deviant) const {
    return getContainerQOB(deviant).isValid();
}
void ClassObjectIntf::removeContainerQOB(Deviant deviant) {
    property::removeBothEnds<&ClassObjectIntf::getContainerQOB, &ClassObjectIntf::setContainerQOB>(
        this, deviant, sIntrospectiveMethods, ContainerQOBId, leaving(this, deviant));
}
void ClassObjectIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    if (!property::requireSameModel(
            this, deviant, container, sIntrospectiveMethods, ContainerQOBId)) {
        removeContainerQOB(deviant);
    } else if (getContainerQOB(deviant) != container) {
        property::joinContainer(this, deviant, container);
    }
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
    property::setNearEnd<&ClassObjectIntf::getContainerQOB, &ClassObjectIntf::setContainerQOB>(
        this, deviant, container, sIntrospectiveMethods, ContainerQOBId, leaving(this, deviant));
}

// The list of the model's objects ------------------------------------------------------------

bool ClassObjectIntf::hasRootModel(Deviant deviant) const {
    return getRootModel(deviant).isValid();
}
void ClassObjectIntf::removeRootModel(Deviant deviant) {
    if (Model const model = getRootModel(deviant); model.isValid()) {
        model->getRootObjects(deviant).removeAll(ClassObject(this, deviant));
    }
}
Model ClassObjectIntf::getRootModel(Deviant deviant) const {
    Model const model = getModelQOB(deviant);
    if (!model.isValid()) {
        return {};
    }
    ModelIntf const* const state = property::readState<ModelIntf>(model.get(), deviant);
    ClassObject const self(const_cast<ClassObjectIntf*>(this), deviant);
    return state->getRootObjectsWithoutAssociation(deviant).contains(self) ? model : Model();
}
void ClassObjectIntf::removeOnlyRootModel(Deviant deviant) {
    removeOnlyModelQOB(deviant);
}

// What the object contains --------------------------------------------------------------------

Sequence<ClassObject> ClassObjectIntf::getContaineeQOBs(Deviant deviant) {
    return SequenceCombination<ClassObject>(deviant, 1).add(getAppliedStereotypeInstances(deviant));
}
Sequence<ClassObject> ClassObjectIntf::getContaineeQOBsWithoutAssociation(Deviant deviant) const {
    return SequenceCombination<ClassObject>(deviant, 1)
        .add(const_cast<ClassObjectIntf*>(this)->getAppliedStereotypeInstancesWithoutAssociation(
            deviant));
}

bool ClassObjectIntf::hasAppliedStereotypeInstances(Deviant deviant) const {
    return property::get<&ClassObjectIntf::hasAppliedStereotypeInstances>(this, deviant);
}
Sequence<StereotypeObject> ClassObjectIntf::getAppliedStereotypeInstances(Deviant deviant) {
    return property::elementsWithOwner<StereotypeObject>(this,
                                                         deviant,
                                                         sIntrospectiveMethods,
                                                         AppliedStereotypeInstanceId,
                                                         sIntrospectiveMethods,
                                                         ContainerQOBId);
}
Sequence<StereotypeObject>
ClassObjectIntf::getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) {
    return property::elements<StereotypeObject>(
        this, deviant, sIntrospectiveMethods, AppliedStereotypeInstanceId);
}

// What outside tools know of the object ---------------------------------------------------------

bool ClassObjectIntf::hasExternalId(Deviant deviant) const {
    return property::get<&ClassObjectIntf::hasExternalId>(this, deviant);
}
void ClassObjectIntf::removeExternalId(Deviant deviant) {
    property::removeOptional<&ClassObjectIntf::hasExternalId, &ClassObjectIntf::removeExternalId>(
        this, deviant);
}
void ClassObjectIntf::setExternalId(Deviant deviant, String const& id) {
    if (id.view().empty()) {
        removeExternalId(deviant);
        return;
    }
    property::setMandatory<&ClassObjectIntf::getExternalId, &ClassObjectIntf::setExternalId>(
        this, deviant, id);
}
String ClassObjectIntf::getExternalId(Deviant deviant) const {
    return property::get<&ClassObjectIntf::getExternalId>(this, deviant);
}

bool ClassObjectIntf::hasExternalToolInfos(Deviant deviant) const {
    return property::get<&ClassObjectIntf::hasExternalToolInfos>(this, deviant);
}
Sequence<ExternalToolInfo> ClassObjectIntf::getExternalToolInfos(Deviant deviant) {
    return getExternalToolInfosWithoutAssociation(deviant);
}
Sequence<ExternalToolInfo>
ClassObjectIntf::getExternalToolInfosWithoutAssociation(Deviant deviant) {
    return property::elements<ExternalToolInfo>(
        this, deviant, sIntrospectiveMethods, ExternalToolInfoId);
}

ExternalToolInfo ClassObjectIntf::getExternalToolInfo(Deviant deviant, String key) const {
    if (hasExternalToolInfos(deviant)) {
        for (ExternalToolInfo const& info :
             const_cast<ClassObjectIntf*>(this)->getExternalToolInfos(deviant)) {
            if (info.getKey() == key) {
                return info;
            }
        }
    }
    return {};
}
void ClassObjectIntf::setExternalToolInfo(Deviant deviant, ExternalToolInfo info) {
    QOB_REQUIRE(info.isValid(), "An external tool info needs a key.");
    Sequence<ExternalToolInfo> const infos = getExternalToolInfosWithoutAssociation(deviant);
    for (int i = 0; i != infos.size(); ++i) {
        if (infos.at(i).getKey() == info.getKey()) {
            infos.replace(i, info);
            return;
        }
    }
    infos.push_back(info);
}
void ClassObjectIntf::removeExternalToolInfo(Deviant deviant, ExternalToolInfo info) {
    if (hasExternalToolInfos(deviant)) {
        getExternalToolInfosWithoutAssociation(deviant).removeAll(info);
    }
}

void ClassObjectIntf::internal_deviationAssign(Deviant deviant,
                                               ObjectIntf* source,
                                               Deviant sourceDeviant) {
    property::assignBlocks<ClassObjectIntf, ClassObjectIntf>(this, deviant, source, sourceDeviant);
}

void ClassObjectIntf::internal_assignBlock(Deviant deviant,
                                           ClassObjectIntf const* source,
                                           Deviant sourceDeviant) {
    using Self = ClassObjectIntf;
    property::assignEach<
        property::AssignSparseSequence<&Self::hasAppliedStereotypeInstances,
                                       &Self::getAppliedStereotypeInstances,
                                       &Self::getAppliedStereotypeInstancesWithoutAssociation>,
        property::AssignReference<&Self::hasModelQOB,
                                  &Self::getModelQOB,
                                  &Self::setModelQOB,
                                  &Self::removeModelQOB>,
        property::AssignContainer,
        property::AssignOptional<&Self::hasExternalId,
                                 &Self::getExternalId,
                                 &Self::setExternalId,
                                 &Self::removeExternalId>,
        property::AssignSparseValues<&Self::hasExternalToolInfos,
                                     &Self::getExternalToolInfos,
                                     &Self::getExternalToolInfosWithoutAssociation>>(
        this, deviant, source, sourceDeviant);
}

// What few objects have -------------------------------------------------------------------------

void ClassObjectIntf::copySparseProperties(ClassObjectIntf const& other) {
    QOB::internal::SparseProperties::copy(other, *this);
}
void ClassObjectIntf::dropSparseProperties() noexcept {
    QOB::internal::SparseProperties::drop(*this);
}

ClassObjectIntf* ClassObjectIntf::getReadDeviantI(Deviant, ClassObjectIntf const*) const {
    return nullptr;
}
ClassObjectIntf* ClassObjectIntf::getWriteDeviantI(Deviant, ClassObjectIntf const*) const {
    return nullptr;
}

} // namespace QOB::NSInterface
