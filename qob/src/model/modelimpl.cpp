#include "model/modelimpl.h"

#include "qob/kernel/deviant/sparseproperties.h"
#include "qob/qob/modelcache.h"

namespace QOB::NSImplementation {

using internal::DeviantData;
using internal::ModelCore;

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
    DeviantData::of(rootDeviant_).requireNotTelling("destroy the model");
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
    return core_->ids().allocate();
}

void ModelImpl::bindObjectId(Deviant deviant, ClassObject object, Integer id) {
    own(deviant).requireNotTelling("bind an object to an id");
    QOB_REQUIRE(object->getRootDeviant() == rootDeviant_, "The object belongs to another model.");
    core_->bindId(deviant, object.get(), id);
}

ClassObject ModelImpl::findObject(Deviant deviant, Integer id) const {
    own(deviant);
    return {core_->ids().find(deviant, id), deviant};
}

Deviant ModelImpl::createDeviant(Deviant deviant) {
    own(deviant).requireNotTelling("create a deviant");
    return core_->createBranch();
}

void ModelImpl::removeDeviant(Deviant deviant, Deviant branch) {
    own(deviant).requireNotTelling("remove a deviant");
    QOB_REQUIRE(!own(branch).isRoot(), "The root deviant of a model cannot be removed.");
    core_->removeBranch(branch);
}

void ModelImpl::setUndoEnabled(Deviant deviant, bool enabled) {
    DeviantData& data = own(deviant);
    data.requireNotTelling("switch undo on or off");
    data.history().setUndoEnabled(enabled);
}
bool ModelImpl::undo(Deviant deviant) {
    return own(deviant).history().undo();
}
bool ModelImpl::redo(Deviant deviant) {
    return own(deviant).history().redo();
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
    internal::OneWrite const write;
    internal::WithoutObservers const unobserved(deviant);
    writeState(deviant)->internal_addRootObject(deviant, object);
}

void ModelImpl::listNewObject(Deviant deviant, ClassObjectIntf* object) {
    internal::WithoutObservers const unobserved(deviant);
    writeState(deviant)->fields_.rootObjects.storage().appendNoting(object);
}

void ModelImpl::internal_removeRootObject(Deviant deviant, ClassObjectIntf* object) {
    ModelDeviantImpl* const state = readState(deviant);
    if (deviant == rootDeviant_ && deviant.isWritableWithoutChecks()) {
        state->internal_removeRootObject(deviant, object);
    } else if (state->fields_.rootObjects.storage().contains(object)) {
        internal::OneWrite const write;
        internal::WithoutObservers const unobserved(deviant);
        writeState(deviant)->internal_removeRootObject(deviant, object);
    }
}

} // namespace QOB::NSImplementation
