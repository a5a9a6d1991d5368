#include "model/modelcore.h"

#include "model/keepalive.h"
#include "object/describe.h"
#include "qob/qob/assert.h"
#include "registry/remnants.h"

#include <algorithm>
#include <utility>

namespace QOB::internal {

namespace {
ModelCore* firstModel = nullptr;
} // namespace

ModelCore::ModelCore(ClassObjectIntf* model) : model_(model) {
    root_ = &makeDeviant();
    DeviantAccess::record(root_->self()).rootIndex = DeviantAccess::index(root_->self());
    retain(counted(model_));
    nextModel_ = firstModel;
    if (nextModel_ != nullptr) {
        nextModel_->previousModel_ = this;
    }
    firstModel = this;
}

ModelCore::~ModelCore() {
    if (previousModel_ != nullptr) {
        previousModel_->nextModel_ = nextModel_;
    } else {
        firstModel = nextModel_;
    }
    if (nextModel_ != nullptr) {
        nextModel_->previousModel_ = previousModel_;
    }
}

ModelCore& ModelCore::of(Deviant deviant) {
    return DeviantData::of(deviant).model();
}

DeviationsBase* ModelCore::findDeviationsOfPart(ClassObjectIntf const* object) noexcept {
    auto const* const whole = castObject<ClassObjectIntf>(object);
    RootPart const* const part = whole != nullptr ? rootPartOf(whole) : nullptr;
    return static_cast<DeviationsBase*>(const_cast<RootPart*>(part));
}

void ModelCore::failNoRootObject() {
    QOB_FAIL("The object is no root object.");
}

void ModelCore::endAll(ClassObjectIntf const* kept) noexcept {
    for (ModelCore* core = firstModel; core != nullptr;) {
        if (core->model_ == kept) {
            core = core->nextModel_;
        } else {
            core->model_->destroy(core->root());
            core = firstModel; // the list has changed
        }
    }
}

void ModelCore::forgetParts() noexcept {
    for (DeviantData* data = root_; data != nullptr; data = data->next_) {
        data->history().forgetParts();
    }
}

DeviantData& ModelCore::makeDeviant() {
    std::uint32_t const index = acquireRecord();
    DeviantRecord& record = deviantRecordAt(index);
    Deviant const self = DeviantAccess::make(index, record.generation);
    try {
        record.data = new DeviantData(*this, self);
    } catch (...) {
        retireRecord(index);
        throw;
    }
    record.model = this;
    record.rootIndex = root_ != nullptr ? DeviantAccess::index(root_->self()) : index;
    DeviantData& data = *record.data;
    data.previous_ = last_;
    if (last_ != nullptr) {
        last_->next_ = &data;
    }
    last_ = &data;
    return data;
}

void ModelCore::retireDeviant(DeviantData& data) {
    (data.next_ != nullptr ? data.next_->previous_ : last_) = data.previous_;
    if (data.previous_ != nullptr) {
        data.previous_->next_ = data.next_;
    }
    retireRecord(DeviantAccess::index(data.self()));
    std::shared_ptr<ObserverList> const observers = data.observers();
    delete &data;
    if (observers != nullptr) {
        observers->end();
    }
}

Deviant ModelCore::createBranch() {
    return makeDeviant().self();
}

void ModelCore::removeBranch(Deviant branch) {
    DeviantData& data = DeviantData::of(branch);
    if (data.history().depth() != 0) {
        data.history().rollback();
    }
    data.history().drop();
    data.dropStates();
    retireDeviant(data);
    noteObservers();
}

void ModelCore::noteObservers() noexcept {
    bool isObserved = false;
    for (DeviantData const* data = root_; data != nullptr; data = data->next_) {
        isObserved = isObserved || data->hasObservers();
    }
    root_->setGate(Observed, isObserved);
}

void ModelCore::allDeviants(std::vector<Deviant>& deviants) const {
    for (DeviantData const* data = root_; data != nullptr; data = data->next_) {
        deviants.push_back(data->self());
    }
}

DeviationsBase& ModelCore::requireOwn(ClassObjectIntf const* object) const {
    DeviationsBase& deviations = deviationsOf(object);
    QOB_REQUIRE(deviations.rootDeviant_ == root(), "The object belongs to another model.");
    return deviations;
}

void ModelCore::enterObject(ClassObjectIntf* object) {
    deviationsOf(object).rootDeviant_ = root();
    addObject(object);
}

void ModelCore::addObject(ClassObjectIntf* object) {
    DeviationsBase& deviations = requireOwn(object);
    QOB_REQUIRE(deviations.slot_ == DeviationsBase::NoSlot, "The object is in the model already.");
    QOB_REQUIRE(objects_.size() < DeviationsBase::NoSlot,
                "The number of objects of the model is at its limit.");
    objects_.push_back(object);
    deviations.slot_ = static_cast<std::uint32_t>(objects_.size() - 1) & DeviationsBase::NoSlot;
}

void ModelCore::removeObject(ClassObjectIntf* object) {
    DeviationsBase& deviations = requireOwn(object);
    if (deviations.slot_ == DeviationsBase::NoSlot) {
        return;
    }
    objects_[deviations.slot_] = nullptr;
    ++freeSlots_;
    deviations.slot_ = DeviationsBase::NoSlot;
    forgetId(object);
    if (deviations.hasBranchState_ != 0) {
        forEachBranch([object](DeviantData& branch) { branch.forgetObject(object); });
    }
    compactObjects();
}

void ModelCore::compactObjects() {
    while (!objects_.empty() && objects_.back() == nullptr) {
        objects_.pop_back();
        --freeSlots_;
    }
    constexpr std::size_t worthIt = 64;
    if (freeSlots_ < worthIt || freeSlots_ < objects_.size() / 2) {
        return;
    }
    std::erase(objects_, nullptr);
    freeSlots_ = 0;
    for (std::size_t i = 0; i < objects_.size(); ++i) {
        deviationsOf(objects_[i]).slot_ = static_cast<std::uint32_t>(i) & DeviationsBase::NoSlot;
    }
}

bool ModelCore::meets(ClassObjectIntf const* owner,
                      ClassObjectIntf const* object,
                      Deviant deviant) const {
    // Where an object is created, what comes back by undo does so after the object is gone.
    bool const isNew = deviationsOf(object).hasBoundId_ == 0;
    for (DeviantData const* data = root_; data != nullptr; data = data->next_) {
        Deviant const each = data->self();
        bool const isHere = each == deviant || object->deviant_isValid(each) ||
                            (!isNew && data->history().mayComeBack(object));
        bool const followsUndo = isNew && each == deviant;
        if (isHere && (owner->deviant_isValid(each) ||
                       (!followsUndo && data->history().mayComeBack(owner)))) {
            return true;
        }
    }
    return false;
}

void ModelCore::requireFreeId(Deviant deviant, ClassObjectIntf const* object, int id) const {
    ids_.forEachWith(id, [&](ClassObjectIntf* owner) {
        if (owner != object && meets(owner, object, deviant)) {
            std::string const subject = describe(owner);
            QOB_FAIL("The object id (%d) belongs to %s already.", id, subject.c_str());
        }
    });
}

void ModelCore::bindId(Deviant deviant, ClassObjectIntf* object, Integer id) {
    if (id.isValid()) {
        requireFreeId(deviant, object, id);
    }
    Integer const before = deviationsOf(object).objectId_;
    bool const isNew = deviationsOf(object).hasBoundId_ == 0 && before == -1;
    forgetId(object);
    object->setObjectId(deviant, id);
    if (id.isValid()) {
        ids_.enter(id, object);
        deviationsOf(object).hasBoundId_ = 1;
    }
    if (!isNew) {
        tellObserversOfId(*root_, object, before);
    }
}

void ModelCore::bindFirstId(Deviant deviant, ClassObjectIntf* object, Integer id) {
    if (id.isValid() && !ids_.enterNext(id, object)) {
        requireFreeId(deviant, object, id);
        ids_.enter(id, object);
    }
    DeviationsBase& deviations = deviationsOf(object);
    deviations.objectId_ = id;
    deviations.hasBoundId_ = id.isValid() ? 1 : 0;
}

void ModelCore::forgetId(ClassObjectIntf* object) {
    DeviationsBase& deviations = deviationsOf(object);
    if (deviations.hasBoundId_ == 0) {
        return;
    }
    deviations.hasBoundId_ = 0;
    ids_.forget(deviations.objectId_, object);
}

void ModelCore::end() {
    std::vector<ClassObjectIntf*> objects;
    objects.reserve(objectCount());
    forEachObject([&](ClassObjectIntf* object) { objects.push_back(object); });
    KeepAlive const keep(std::move(objects));

    for (DeviantData* data = root_; data != nullptr; data = data->next_) {
        data->history().drop();
    }
    for (DeviantData* data = root_; data != nullptr; data = data->next_) {
        data->dropStates();
    }
    for (ClassObjectIntf* const object : keep.objects()) {
        object->deviant_markModelDestroyed();
        if (object->numRef() > 1) { // no state counts it any more, so some handle does
            noteOutliving(object);
        }
    }
    objects_.clear();
    freeSlots_ = 0;
    ids_.clear();
    while (last_ != nullptr) {
        retireDeviant(*last_);
    }
    root_ = nullptr;
    internal::release(counted(model_));
}

} // namespace QOB::internal
