#include "qob/qob/nsinterface/modelintf.h"

#include "qob/kernel/containers/sequence/views/associationsequence.h"
#include "qob/kernel/containers/sequence/views/combinedsequence.h"
#include "qob/kernel/containers/sequence/views/deviantsequence.h"
#include "qob/kernel/meta/metaclassof.h"
#include "qob/kernel/property/mandatoryvalue.h"
#include "qob/kernel/property/multivalued.h"
#include "qob/qob/class.h"
#include "qob/qob/model.h"
#include "qob/qob/stereotypeobject.h"

/// What runs on the root object of a model and goes through its states.
namespace QOB::NSInterface {

namespace visitor = CooperativeVisitor::internal;

visitor::MethodInfo ModelIntf::getVisitMethod(visitor::MethodTable const& table) const {
    return visitor::visitMethod(this, table);
}
void* ModelIntf::cast(visitor::ClassInfo const& info) const {
    return visitor::castTo(this, info);
}

ImmutableClass ModelIntf::getMetaClass(Deviant) const {
    return metaClassOf(sIntrospectiveMethods);
}

bool ModelIntf::hasUri(Deviant deviant) const {
    return property::get<&ModelIntf::hasUri>(this, deviant);
}
void ModelIntf::removeUri(Deviant deviant) {
    if (hasUri(deviant)) {
        property::OneWrite const write;
        property::writeState(this, deviant)->removeUri(deviant);
    }
}
void ModelIntf::setUri(Deviant deviant, String const& uri) {
    if (!uri.isValid()) {
        removeUri(deviant);
        return;
    }
    property::setMandatory<&ModelIntf::getUri, &ModelIntf::setUri>(this, deviant, uri);
}
String ModelIntf::getUri(Deviant deviant) const {
    return property::get<&ModelIntf::getUri>(this, deviant);
}

// A state has only what lies in the model; stereotypes are elsewhere.

Sequence<ClassObject> ModelIntf::internal_ownContainees(Deviant deviant) {
    return property::elementsWithOwner<ClassObject>(this,
                                                    deviant,
                                                    ClassObjectIntf::sIntrospectiveMethods,
                                                    ContaineeQOBId,
                                                    ClassObjectIntf::sIntrospectiveMethods,
                                                    ContainerQOBId);
}

Sequence<ClassObject> ModelIntf::getContaineeQOBs(Deviant deviant) {
    return SequenceCombination<ClassObject>(deviant, 2)
        .add(getAppliedStereotypeInstances(deviant))
        .add(internal_ownContainees(deviant));
}

Sequence<ClassObject> ModelIntf::getContaineeQOBsWithoutAssociation(Deviant deviant) const {
    return SequenceCombination<ClassObject>(deviant, 2)
        .add(const_cast<ModelIntf*>(this)->getAppliedStereotypeInstancesWithoutAssociation(deviant))
        .add(property::elements<ClassObject>(
            this, deviant, ClassObjectIntf::sIntrospectiveMethods, ContaineeQOBId));
}

Sequence<ClassObject> ModelIntf::getRootObjects(Deviant deviant) {
    // The other end is the one model of each object.
    return {new GenericAssociationSequence(ClassObject(this, deviant),
                                           getRootObjectsWithoutAssociation(deviant).pointer(),
                                           &ClassObjectIntf::sIntrospectiveMethods,
                                           ClassObjectIntf::ModelQOBId,
                                           true),
            deviant};
}

Sequence<ClassObject> ModelIntf::getRootObjectsWithoutAssociation(Deviant deviant) const {
    return {new GenericDeviantSequence(
                const_cast<ModelIntf*>(this), deviant, &sIntrospectiveMethods, RootObjectsId),
            deviant};
}

void ModelIntf::internal_deviationAssign(Deviant deviant,
                                         ObjectIntf* source,
                                         Deviant sourceDeviant) {
    // The list of objects isn't assigned: a merge brings objects in and destroys them one by one.
    try {
        auto const* const model = castObject<ModelIntf>(source);
        if (model->hasUri(sourceDeviant)) {
            setUri(deviant, model->getUri(sourceDeviant));
        } else {
            removeUri(deviant);
        }
    } catch (Exception const&) { // a property that can't be assigned is skipped
    }
}

// A state answers the operations of a model with what a state has: nothing.

Integer ModelIntf::allocateObjectId(Deviant) {
    return {};
}
void ModelIntf::bindObjectId(Deviant, ClassObject, Integer) {
}
ClassObject ModelIntf::findObject(Deviant, Integer) const {
    return {};
}
Deviant ModelIntf::createDeviant(Deviant) {
    return {};
}
void ModelIntf::removeDeviant(Deviant, Deviant) {
}
void ModelIntf::mergeDeviant(Deviant, Deviant) {
}
void ModelIntf::setUndoEnabled(Deviant, bool) {
}
bool ModelIntf::undo(Deviant) {
    return false;
}
bool ModelIntf::redo(Deviant) {
    return false;
}
void ModelIntf::setReadOnly(Deviant, bool) {
}
std::vector<Model> ModelIntf::getReferredModels(Deviant) const {
    return {};
}
ModelIntf* ModelIntf::getReadDeviantI(Deviant, ModelIntf const*) const {
    return nullptr;
}
ModelIntf* ModelIntf::getWriteDeviantI(Deviant, ModelIntf const*) const {
    return nullptr;
}
void ModelIntf::internal_addRootObject(Deviant, ClassObjectIntf*) {
}
void ModelIntf::internal_removeRootObject(Deviant, ClassObjectIntf*) {
}

} // namespace QOB::NSInterface
