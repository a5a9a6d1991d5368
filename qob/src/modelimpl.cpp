#include "modelimpl.h"

#include "meta/kernelpackage.h"
#include "qob/kernel/containers/sequence/views/associationsequence.h"
#include "qob/kernel/containers/sequence/views/deviantsequence.h"
#include "qob/kernel/deviant/sparseproperties.h"
#include "qob/kernel/factory/create.h"
#include "qob/kernel/meta/metaclassof.h"
#include "qob/kernel/property/mandatoryvalue.h"
#include "qob/kernel/property/multivalued.h"
#include "qob/kernel/property/reflective.h"
#include "qob/qob/modelcache.h"
#include "qob/qob/transaction.h"

#include <algorithm>

namespace QOB {

using internal::DeviantData;
using internal::ModelCore;
using NSInterface::ClassObjectIntf;
using NSInterface::ModelIntf;
using NSInterface::ObjectIntf;

namespace visitor = CooperativeVisitor::internal;

Deviant internal::accessedDeviant(Model const& model) {
    ModelIntf const* const object = model.operator->();
    if (!model.getDeviant().isValid()) {
        ModelCore::deviationsOf(object).checkAccess(model.getDeviant());
    }
    return model.getDeviant();
}

// ModelIntf: what runs on the root object and goes through the states ---------------------------

namespace NSInterface {

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

namespace {

MetaPropertyDescription rootObjects{
    .name = "rootObjects",
    .package = &get_QOB_PackageIntrospectiveMethods,
    .typeIndex = ClassObjectIndex,
    .flags = PropertyOrdered | PropertyUnique | PropertyMultiValued,
    .lower = 0,
    .upper = MetaPropertyDescription::Unbounded,
    .id = ModelIntf::RootObjectsId,
    .associationName = "",
    .hasOpposite = 1,
    .oppositePackage = &get_QOB_PackageIntrospectiveMethods,
    .oppositeClass = ClassObjectIndex,
    .oppositeId = ClassObjectIntf::ModelQOBId,
};
MetaPropertyDescription* modelProperties[] = {nullptr, &rootObjects};

struct ModelDescription {
    using Interface = ModelIntf;
    static constexpr char const* name = "QOB.Model";
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Many<ModelIntf::RootObjectsId,
                                          &ModelIntf::getRootObjects,
                                          &ModelIntf::getRootObjectsWithoutAssociation>>;
};

} // namespace

constinit IntrospectiveMethods ModelIntf::sIntrospectiveMethods =
    reflective::methodsOf<ModelDescription>(modelProperties,
                                            QOB::internal::belowClassObject,
                                            &QOB::internal::kernelPackage);

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

} // namespace NSInterface

// ModelImpl ------------------------------------------------------------------------------------

namespace NSImplementation {

ModelImpl::ModelImpl() : core_(std::make_unique<ModelCore>(this)) {
    rootDeviant_ = core_->root();
    rootState_ = createState();
    rootDeviant_.addObjectToModel(this);
}

ModelImpl::~ModelImpl() = default;

char const* ModelImpl::getLumvoName(bool immutable) const {
    return immutable ? "QOB.ImmutableModel" : "QOB.Model";
}

void ModelImpl::destroy(Deviant deviant) {
    if (core_ == nullptr) {
        return;
    }
    requireOwn(deviant);
    CountedPointer<ModelIntf> const keep(this);
    ModelCache::instance()->unbindModel(Model(this, rootDeviant_));
    core_->end();
    core_.reset();
}

DeviantData& ModelImpl::own(Deviant deviant) const {
    checkAccess(deviant);
    DeviantData& data = DeviantData::of(deviant);
    QOB_REQUIRE(&data.model() == core_.get(), "The deviant belongs to another model.");
    return data;
}

Integer ModelImpl::allocateObjectId(Deviant deviant) {
    own(deviant);
    return core_->allocateId();
}

void ModelImpl::bindObjectId(Deviant deviant, ClassObject object, Integer id) {
    own(deviant);
    QOB_REQUIRE(object->getRootDeviant() == rootDeviant_, "The object belongs to another model.");
    core_->bindId(deviant, object.get(), id);
}

ClassObject ModelImpl::findObject(Deviant deviant, Integer id) const {
    own(deviant);
    return {core_->findId(deviant, id), deviant};
}

Deviant ModelImpl::createDeviant(Deviant deviant) {
    own(deviant);
    return core_->createBranch();
}

void ModelImpl::removeDeviant(Deviant deviant, Deviant branch) {
    own(deviant);
    QOB_REQUIRE(!own(branch).isRoot(), "The root deviant of a model cannot be removed.");
    core_->removeBranch(branch);
}

void ModelImpl::setUndoEnabled(Deviant deviant, bool enabled) {
    own(deviant).setUndoEnabled(enabled);
}
bool ModelImpl::undo(Deviant deviant) {
    return own(deviant).undo();
}
bool ModelImpl::redo(Deviant deviant) {
    return own(deviant).redo();
}
void ModelImpl::setReadOnly(Deviant deviant, bool readOnly) {
    own(deviant).setGate(internal::ReadOnly, readOnly);
}

std::vector<Model> ModelImpl::getReferredModels(Deviant deviant) const {
    own(deviant);
    std::vector<Model> models;
    if (core_->mayReferElsewhere()) {
        for (Deviant const other : internal::SparseProperties::foreignModels(deviant)) {
            models.emplace_back(static_cast<ModelIntf*>(ModelCore::of(other).model()), other);
        }
    }
    return models;
}

void ModelImpl::internal_addRootObject(Deviant deviant, ClassObjectIntf* object) {
    writeState(deviant)->internal_addRootObject(deviant, object);
}

void ModelImpl::internal_removeRootObject(Deviant deviant, ClassObjectIntf* object) {
    if (readState(deviant)->fields_.rootObjects.storage().contains(object)) {
        writeState(deviant)->internal_removeRootObject(deviant, object);
    }
}

namespace {

/// What one object brings into a merge.
struct Change {
    ClassObject object; // seen in the source
    enum Kind { Assign, BringIn, Destroy } kind;
};

/// What the source changed that concerns the target. An object that the target knows as destroyed
/// stays destroyed; one that neither knows is left out.
std::vector<Change> changesBetween(DeviantData const& source, Deviant target) {
    std::vector<Change> changes;
    DeviantData const& targetData = DeviantData::of(target);
    for (ClassObjectIntf* const object : source.changedObjects()) {
        internal::StateSlot const slot = source.slotOf(object);
        bool const present = object->deviant_isValid(target);
        ClassObject const handle(object, source.self());
        if (isRealState(slot.state)) {
            if (present) {
                changes.push_back({handle, Change::Assign});
            } else if (!targetData.knowsAsDestroyed(object)) {
                changes.push_back({handle, Change::BringIn});
            }
        } else if (slot.destroyedHere && present) {
            changes.push_back({handle, Change::Destroy});
        }
    }
    return changes;
}

bool hasKind(std::vector<Change> const& changes, ClassObjectIntf const* object, Change::Kind kind) {
    return std::any_of(changes.begin(), changes.end(), [&](Change const& change) {
        return change.kind == kind && change.object.get() == object;
    });
}

/// Raises if an object would come in under an id that another one has in the target.
void requireOwnIds(ModelCore const& core, std::vector<Change> const& changes, Deviant target) {
    for (Change const& change : changes) {
        Integer const id = change.object->getObjectId(target);
        if (change.kind != Change::BringIn || !id.isValid()) {
            continue;
        }
        core.forEachWithId(id, [&](ClassObjectIntf* other) {
            if (other != change.object.get() &&
                (other->deviant_isValid(target) ? !hasKind(changes, other, Change::Destroy)
                                                : hasKind(changes, other, Change::BringIn))) {
                QOB_FAIL("Cannot merge %s: its id belongs to %s there. Bind one of the two to "
                         "another id.",
                         internal::describe(change.object.get()).c_str(),
                         internal::describe(other).c_str());
            }
        });
    }
}

} // namespace

void ModelImpl::mergeDeviant(Deviant deviant, Deviant source) {
    own(deviant);
    DeviantData const& sourceData = own(source);
    QOB_REQUIRE(deviant != source, "A deviant cannot be merged into itself.");
    QOB_REQUIRE(!source.isWithinTransaction(),
                "A deviant with an open transaction cannot be merged.");
    std::vector<Change> const changes = changesBetween(sourceData, deviant);
    requireOwnIds(*core_, changes, deviant);
    Transaction transaction(Model(this, deviant));
    deviant.assertWritable(this); // the assignments below would skip what can't be written
    ReferenceStorage const& rootObjects = readState(source)->fields_.rootObjects.storage();
    for (Change const& change : changes) {
        if (change.kind == Change::BringIn) {
            deviant.markObjectCreated(change.object.get());
            castObject<ClassObjectIntf>(change.object->internal_createDeviation(deviant))
                ->setModelQOB(deviant, Model(this, deviant));
            if (rootObjects.contains(change.object.get())) { // a factory is none
                internal_addRootObject(deviant, change.object.get());
            }
        }
    }
    auto const assign = [&](Change const& change) {
        if (change.kind != Change::Destroy) {
            change.object->internal_deviationAssign(
                deviant, change.object->internal_getDeviation(source), source);
        }
    };
    std::for_each(changes.begin(), changes.end(), assign);
    // Once more for what was written: an object that changed places within its container may have
    // been taken out of the old place after it had come into the new one.
    for (Change const& change : changes) {
        if (deviant.getSavedOldStateOfObject(change.object.get()) != nullptr) {
            assign(change);
        }
    }
    for (Change const& change : changes) {
        if (change.kind == Change::Destroy) {
            change.object->destroy(deviant);
        }
    }
    transaction.commit();
}

} // namespace NSImplementation
} // namespace QOB
